# Sound buffers on the CPU: copies and clears within their ranges, the conversions to
# interleaved bytes, and the waveform columns of a block. The blocks made from a file's
# bytes are tested with the readers, in sorvel_plugin_tests.
list(APPEND SORVEL_MEDIA_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/AudioBufferTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/WaveformBufferTest.cpp
)

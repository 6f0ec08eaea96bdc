# Sound buffers on the CPU: copies and clears within their ranges, the conversions to
# interleaved bytes, the waveform columns of a block, and the frequency analyses. The
# blocks made from a file's bytes are tested with the readers, in sorvel_plugin_tests.
list(APPEND SORVEL_MEDIA_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/AudioAnalysisTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AudioBufferTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/WaveformBufferTest.cpp
)

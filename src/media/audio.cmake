# Sound on the CPU: planar float buffers, the one-second blocks readers hand over, their
# conversions to and from interleaved bytes, the waveform the timeline draws, and the
# frequency analyses of scripts and the waveform effect.
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/audio/AudioAnalysis.cpp
  ${CMAKE_CURRENT_LIST_DIR}/audio/AudioBlockBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/audio/AudioBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/audio/WaveformBuffer.cpp
)
# The sample loops clamp and take minima with float comparisons. Under the default
# -ftrapping-math a comparison may raise an exception flag, so GCC keeps each one behind
# a branch and vectorises none of them. Nothing in the program reads those flags, and
# the results do not change.
set_source_files_properties(
  ${CMAKE_CURRENT_LIST_DIR}/audio/AudioAnalysis.cpp
  ${CMAKE_CURRENT_LIST_DIR}/audio/AudioBlockBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/audio/AudioBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/audio/WaveformBuffer.cpp
  PROPERTIES COMPILE_OPTIONS -fno-trapping-math)

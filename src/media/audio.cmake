# Sound on the CPU: planar float buffers and the one-second blocks readers hand over.
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/audio/AudioBlockBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/audio/AudioBuffer.cpp
)

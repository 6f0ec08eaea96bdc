# The picture of a sound: waveform and spectrum bars drawn by one pixel shader.
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/wave/WaveImage.cpp
)

# The frame passes: blend states as data, the passes' GLSL and shaders.
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/pass/FramePassGlsl.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/pass/FramePassShaders.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/pass/FramePasses.cpp
)

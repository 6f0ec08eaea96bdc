# The plain pairs of the 3D drawing set: the textured and the coloured surface.
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/surface/SurfaceShaderSources.cpp
  ${CMAKE_CURRENT_LIST_DIR}/surface/SurfaceShaders.cpp
)

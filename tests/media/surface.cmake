# The plain surface pairs of the 3D drawing set, drawn through OpenGL.
list(APPEND SORVEL_GPU_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/SurfaceShadersGpuTest.cpp
)

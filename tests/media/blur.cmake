# The shared box blur: how radius and aspect split into passes here; both of its forms
# and the ぼかし filter against the CPU reference in sorvel_gpu_tests.
list(APPEND SORVEL_MEDIA_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/BoxBlurRadiiTest.cpp
)
list(APPEND SORVEL_GPU_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/BoxBlurGpuTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/BokashiFilterGpuTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/reference/BoxBlurReference.cpp
)
if(TARGET sorvel_effect)
  list(APPEND SORVEL_GPU_TEST_LIBS sorvel_effect)
endif()

# Image buffers here.
list(APPEND SORVEL_MEDIA_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/ImageBufferTest.cpp
)

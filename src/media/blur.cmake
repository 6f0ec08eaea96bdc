# The shared box blur: both of its forms and the store of its intermediate images.
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_SOURCE_DIR}/blur/BoxBlur.cpp
)

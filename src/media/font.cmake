# Fonts: the installed families in the user's menu order, the lookup of one font by
# name and style, and the metrics of a font at a size, through the platform's font
# library (Media::FontSource).
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/font/FontFace.cpp
  ${CMAKE_CURRENT_LIST_DIR}/font/FontManager.cpp
)
target_link_libraries(sorvel_media PUBLIC sorvel_menu sorvel_setting)

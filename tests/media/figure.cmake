# Figures: the built-in outlines and their drawing and SVG files through Qt; fonts
# through a fake font library and through Qt's font database.
list(APPEND SORVEL_MEDIA_TEST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/FigureDrawTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/FigurePathTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/FontManagerTest.cpp
)
list(APPEND SORVEL_MEDIA_TEST_LIBS sorvel_qt_figure sorvel_qt_font Qt6::Gui)

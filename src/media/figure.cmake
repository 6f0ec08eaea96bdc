# Figures: the vector path model of the built-in shapes, the figure list and its drawing
# into CPU images through the platform's 2D library (Media::FigureRasterizer).
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/figure/BuiltinPaths.cpp
  ${CMAKE_CURRENT_LIST_DIR}/figure/EndpointArc.cpp
  ${CMAKE_CURRENT_LIST_DIR}/figure/FigureResource.cpp
  ${CMAKE_CURRENT_LIST_DIR}/figure/PathCommand.cpp
  ${CMAKE_CURRENT_LIST_DIR}/figure/PathData.cpp
)

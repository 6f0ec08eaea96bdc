# The drags of objects on the timeline and the snapping they use.
target_sources(sorvel_project PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/ObjectDrag.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Snapping.cpp
  ${CMAKE_CURRENT_LIST_DIR}/TempoGrid.cpp
)

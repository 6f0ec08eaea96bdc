# The states that undo records keep of objects and rows.
target_sources(sorvel_project PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/ObjectUndoStates.cpp
  ${CMAKE_CURRENT_LIST_DIR}/LayerUndoStates.cpp
)

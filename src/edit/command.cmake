# The edit commands: the verbs of the editor over the model, the chains and the undo
# history.
target_sources(sorvel_project PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/EditCommandObjects.cpp
  ${CMAKE_CURRENT_LIST_DIR}/EditCommandSplit.cpp
  ${CMAKE_CURRENT_LIST_DIR}/EditCommandSections.cpp
  ${CMAKE_CURRENT_LIST_DIR}/EditCommandEffects.cpp
  ${CMAKE_CURRENT_LIST_DIR}/EditCommandLayers.cpp
  ${CMAKE_CURRENT_LIST_DIR}/EditCommandAudio.cpp
)

# The placement rules that need the effect registry: section points with their key
# values, splitting, new objects and copies with their chains, and pasting.
target_sources(sorvel_project PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/ObjectSections.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ObjectFactory.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ObjectPaste.cpp
)

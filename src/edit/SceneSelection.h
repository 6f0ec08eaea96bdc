// The selection of a scene as the edit commands and the undo states change it: what a
// command acts on, clearing, and taking an object out of its scene. Main thread only,
// inside an edit section where the scene is written.
#pragma once

#include <memory>
#include <vector>

namespace Edit {

class Object;
class Scene;

namespace SceneSelection {

// The selected objects; without any, the focus object if it stands on a row; else none.
std::vector<std::shared_ptr<Object>> targets(const Scene& scene);
// The targets that may be changed: those on a locked row are left alone.
std::vector<std::shared_ptr<Object>> editableTargets(const Scene& scene);

void clear(Scene& scene);
// Drops one object from the selection and recomputes what the selection knows of
// itself (whether it holds a control object, its lowest row).
void drop(Scene& scene, Object& object);
// Takes the object out of the scene as a delete does: layer -1, the row lets go of it
// at its compaction, and it leaves the selection.
void takeOut(Scene& scene, Object& object);

}  // namespace SceneSelection

}  // namespace Edit

// The bench that tests of edits on a scene share: the effect registry (one per suite),
// an edit service with its undo history, and objects placed outside any record.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>

#include "edit/EditSection.h"
#include "edit/EditService.h"
#include "edit/EffectManager.h"
#include "edit/Object.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "effect/EffectService.h"
#include "undo/UndoService.h"

namespace ProjectTest {

class ProjectBench : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { effects = new Effect::EffectService(); }
  static void TearDownTestSuite() {
    delete effects;
    effects = nullptr;
  }

  Edit::Scene& scene() { return *edit.currentScene(); }
  std::string text() const { return Edit::ProjectFile::write(edit.project()); }

  // An object with a chain made through the menu path, in a section of its own that
  // records nothing.
  std::shared_ptr<Edit::Object> place(std::int32_t layer, std::int32_t start, std::int32_t end,
                                      std::initializer_list<const wchar_t*> keys = {L"図形"}) {
    Edit::EditSection section(edit);
    section.request(Edit::EditSection::Request::Update);
    auto object = scene().createEmptyObject(layer, start, end);
    for (const wchar_t* key : keys) Edit::EffectManager(*object, *effects).addEffect(key);
    return object;
  }

  static inline Effect::EffectService* effects = nullptr;
  Edit::EditService edit;
  Undo::UndoService history{edit};
};

}  // namespace ProjectTest

// The bench of the edit command tests: an edit service with its undo history, a prompt
// that gives scripted answers, and records of the log lines and of what each section
// asked its listeners for.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "ProjectBench.h"
#include "edit/EditCommand.h"
#include "edit/EditPrompt.h"
#include "edit/EditSection.h"
#include "system/Log.h"

namespace CommandTest {

// Answers from a queue; an empty queue cancels.
class ScriptedPrompt final : public Edit::EditPrompt {
 public:
  std::optional<std::int32_t> askFrameLength(const std::wstring&, std::int32_t, std::int32_t, std::int32_t length,
                                             std::int32_t) override {
    shownLengths.push_back(length);
    return next(lengths);
  }
  std::optional<double> askNumber(const std::wstring&, double, double, double) override { return next(numbers); }
  std::optional<std::wstring> askText(const std::wstring&, const std::wstring&) override { return next(texts); }

  std::deque<std::int32_t> lengths;
  std::deque<double> numbers;
  std::deque<std::wstring> texts;
  std::vector<std::int32_t> shownLengths;

 private:
  template <class T>
  static std::optional<T> next(std::deque<T>& answers) {
    if (answers.empty()) return std::nullopt;
    T answer = answers.front();
    answers.pop_front();
    return answer;
  }
};

using Request = Edit::EditSection::Request;

class CommandTestBase : public ProjectTest::ProjectBench {
 protected:
  void SetUp() override {
    System::Log::setHandler([this](const System::Log::Type&, const char* where, const char* message) {
      log.push_back(std::string(where) + ": " + message);
    });
    edit.setSectionListener([this](const Edit::EditSection& section) {
      std::vector<Request> asked;
      for (int i = 0; i < static_cast<int>(Request::Count); ++i) {
        if (section.requested(static_cast<Request>(i))) asked.push_back(static_cast<Request>(i));
      }
      requests.push_back(asked);
    });
  }
  void TearDown() override { System::Log::resetHandler(); }

  void select(std::initializer_list<std::shared_ptr<Edit::Object>> objects) {
    for (const auto& object : objects) {
      object->selected = true;
      scene().selectedObjects.push_back(object);
    }
  }

  // The objects standing on `layer`, as (start, end) pairs in frame order.
  std::vector<std::pair<std::int32_t, std::int32_t>> row(std::int32_t layer) {
    std::vector<std::pair<std::int32_t, std::int32_t>> spans;
    for (const auto& object : scene().getLayer(layer).objects) {
      if (object->layer == layer) spans.emplace_back(object->start, object->end);
    }
    return spans;
  }

  // Forgets what earlier steps logged and asked for.
  void clearRecords() {
    log.clear();
    requests.clear();
  }

  ScriptedPrompt prompt;
  Edit::EditCommand command{edit, *effects, prompt};
  std::vector<std::string> log;
  std::vector<std::vector<Request>> requests;
};

using Spans = std::vector<std::pair<std::int32_t, std::int32_t>>;

}  // namespace CommandTest

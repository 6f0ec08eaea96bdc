// What an edit command asks the user: the editor answers with its dialogs, tests and
// sorvel2-cli with scripted answers. An empty answer is a cancel, after which the
// command changes nothing. Main thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace Edit {

class EditPrompt {
 public:
  virtual ~EditPrompt() = default;

  // A length in frames, shown also as a time at rate / scale frames a second; the
  // answer lies in 0..maxLength.
  virtual std::optional<std::int32_t> askFrameLength(const std::wstring& title, std::int32_t rate, std::int32_t scale,
                                                     std::int32_t length, std::int32_t maxLength) = 0;
  // A number within minValue..maxValue.
  virtual std::optional<double> askNumber(const std::wstring& title, double value, double minValue,
                                          double maxValue) = 0;
  // A line of text, such as the name of a row.
  virtual std::optional<std::wstring> askText(const std::wstring& title, const std::wstring& text) = 0;
};

}  // namespace Edit

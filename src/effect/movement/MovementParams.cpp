#include "effect/movement/MovementParams.h"

#include "dialog/MessageBox.h"
#include "system/Exception.h"
#include "system/File.h"
#include "system/FileName.h"
#include "system/Log.h"
#include "system/NumberText.h"
#include "system/ReplacingFile.h"
#include "system/Text.h"

namespace Effect {

MovementParamsDefine::MovementParamsDefine(std::int32_t number, std::wstring key, std::vector<double> curve)
    : MenuDefineBase("Params", key, number, key, true), key_(std::move(key)), curve_(std::move(curve)) {}

std::string MovementParamsDefine::formatParamsLine(std::string_view name, const std::vector<double>& curve) {
  std::string line(name);
  line += '=';
  for (std::size_t i = 0; i < curve.size(); ++i) {
    if (i > 0) line += ',';
    line += System::NumberText::formatTrimmed(curve[i]);
  }
  return line + "\r\n";
}

void MovementParamsDefine::saveMovementParamsFile(const std::wstring& path, const std::vector<double>& curve) {
  System::Log::info("Effect::MovementParamsDefine::saveMovementParamsFile", L"save movement params file : %ls",
                    path.c_str());
  System::ReplacingFile file(path);
  file.write(formatParamsLine("params", curve));
  file.commit();
}

void MovementParamsManager::load() {
  const auto readFile = [this](const std::wstring& path, std::wstring_view suffix) {
    std::string text;
    try {
      text = System::File::readAll(path);
    } catch (const std::exception&) {
      return;
    }
    registerText(text, suffix);
  };
  const std::wstring installed = System::FileName::expand(L"%AppInstall%/preset.params");
  if (System::File::exists(installed)) readFile(installed, L"");
  for (const System::DirectoryEntry& file : System::listFiles(L"*.params", System::FileName::expand(L"%Default%"))) {
    readFile(file.path, L"@" + System::FileName::baseName(file.path));
  }
}

void MovementParamsManager::registerText(std::string_view text, std::wstring_view suffix) {
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(start, end - start);
    start = end + 1;
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (line.empty() || line.front() == ';') continue;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || line.find('=', equals + 1) != std::string_view::npos) continue;

    std::vector<double> curve;
    bool readable = true;
    std::string_view values = line.substr(equals + 1);
    while (readable && !values.empty()) {
      const std::size_t comma = values.find(',');
      const auto value = System::NumberText::parseReal<double>(values.substr(0, comma));
      if (value) curve.push_back(*value);
      readable = value.has_value();
      values = comma == std::string_view::npos ? std::string_view() : values.substr(comma + 1);
    }
    // A line whose numbers do not read is skipped like a line without "=".
    if (!readable) continue;

    const std::wstring key = System::Text::fromUtf8(line.substr(0, equals)) + std::wstring(suffix);
    if (presets_.contains(key)) {
      Dialog::showError(L"Failed to register movement params. [%ls]\n\n%ls", key.c_str(),
                        L"Duplicate params with the same key exist.");
      continue;
    }
    System::Log::info("Effect::MovementParamsManager::registerMovementParams", L"register movement params [%ls]",
                      key.c_str());
    presets_.tryEmplace(key, std::make_unique<MovementParamsDefine>(runningNumber_++, key, std::move(curve)));
  }
}

}  // namespace Effect

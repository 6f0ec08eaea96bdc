#include "system/FileName.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <regex>
#include <system_error>
#include <unordered_map>

#include "system/Exception.h"
#include "system/File.h"
#include "system/LocalTime.h"
#include "system/Text.h"

namespace System::FileName {

namespace {

struct VariableList {
  std::vector<std::pair<std::wstring, std::wstring>> ordered;
  std::unordered_map<std::wstring, std::wstring> byName;
};

// Filled once at the first expansion, on the main thread before any worker exists;
// read-only afterwards, so readers on other threads need no lock.
VariableList* variableList = nullptr;


std::size_t lastSeparator(std::wstring_view path) {
  const std::size_t slash = path.find_last_of(L'/');
  const std::size_t backslash = path.find_last_of(L'\\');
  if (slash == std::wstring_view::npos) return backslash;
  if (backslash == std::wstring_view::npos) return slash;
  return std::max(slash, backslash);
}

std::wstring executableDirectory() {
  std::error_code error;
  const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) throw PlatformCallException("readlink", "System::FileName::initializeVariableList", error.value());
  return Text::fromUtf8(executable.parent_path().string());
}

// The user's data folder of a non-portable installation, as the XDG base directories
// define it.
std::wstring userDataDirectory() {
  const char* dataHome = std::getenv("XDG_DATA_HOME");
  if (dataHome && dataHome[0] == '/') return Text::fromUtf8(dataHome);
  const char* home = std::getenv("HOME");
  if (!home || home[0] == '\0') {
    throw PlatformCallException("getenv", "System::File::getSystemDirectory", ENOENT);
  }
  return Text::fromUtf8(home) + L"/.local/share";
}

VariableList& ensureVariableList() {
  if (!variableList) initializeVariableList(executableDirectory());
  return *variableList;
}

}  // namespace

void initializeVariableList(const std::wstring& installDirectory) {
  auto list = std::make_unique<VariableList>();
  const std::wstring portable = installDirectory + L"/data";
  const std::wstring appData = File::isDirectory(portable) ? portable : userDataDirectory() + L"/sorvel2";

  struct Row {
    const wchar_t* name;
    std::wstring value;
    bool create;
  };
  const Row rows[] = {
      {L"%AppInstall%", installDirectory, false},   {L"%AppData%", appData, true},
      {L"%Plugin%", appData + L"/Plugin", true},     {L"%Script%", appData + L"/Script", true},
      {L"%Default%", appData + L"/Default", true},   {L"%Alias%", appData + L"/Alias", true},
      {L"%Figure%", appData + L"/Figure", true},     {L"%Transition%", appData + L"/Transition", true},
      {L"%Language%", appData + L"/Language", true}, {L"%Backup%", appData + L"/Backup", true},
      {L"%Log%", appData + L"/Log", true},
  };
  for (const Row& row : rows) {
    if (row.create) File::createDirectory(row.value);
    list->ordered.emplace_back(row.name, row.value);
    list->byName.emplace(row.name, row.value);
  }
  delete variableList;
  variableList = list.release();
}

const std::vector<std::pair<std::wstring, std::wstring>>& variables() { return ensureVariableList().ordered; }

std::wstring expand(std::wstring_view path) {
  std::wstring result(path);
  expandInPlace(result);
  return result;
}

void expandInPlace(std::wstring& path) {
  if (path.empty() || path.find(L'%') == std::wstring::npos) return;
  static const std::wregex leadingVariable(L"^%[^%]+%");
  std::wsmatch match;
  if (!std::regex_search(path, match, leadingVariable)) return;
  const std::wstring variable = match.str();
  const VariableList& list = ensureVariableList();
  const auto found = list.byName.find(variable);
  if (found == list.byName.end()) return;
  std::wstring expanded;
  std::size_t from = 0;
  for (std::size_t at = path.find(variable); at != std::wstring::npos; at = path.find(variable, from)) {
    expanded.append(path, from, at - from);
    expanded += found->second;
    from = at + variable.size();
  }
  expanded.append(path, from, std::wstring::npos);
  path = std::move(expanded);
}

std::wstring timeStamped(std::wstring_view directory, std::wstring_view prefix, std::wstring_view extension) {
  const LocalTime now = localNow();
  const std::string stamp = Text::format(520, "%s_%04d-%02d-%02d_%02d-%02d-%02d-%03d", Text::toUtf8(prefix).c_str(),
                                         now.year, now.month, now.day, now.hour, now.minute, now.second,
                                         now.millisecond);
  std::wstring name(directory);
  name += Text::fromUtf8(stamp);
  name += L'.';
  name += extension;
  expandInPlace(name);
  return name;
}

std::wstring directoryPart(std::wstring_view path) {
  const std::size_t at = lastSeparator(path);
  return at == std::wstring_view::npos ? std::wstring() : std::wstring(path.substr(0, at));
}

std::wstring fileName(std::wstring_view path) {
  const std::size_t at = lastSeparator(path);
  return std::wstring(at == std::wstring_view::npos ? path : path.substr(at + 1));
}

std::wstring baseName(std::wstring_view path) {
  const std::wstring name = fileName(path);
  const std::size_t dot = name.find_last_of(L'.');
  return dot == std::wstring::npos ? name : name.substr(0, dot);
}

std::wstring extension(std::wstring_view path) {
  const std::wstring name = fileName(path);
  const std::size_t dot = name.find_last_of(L'.');
  return dot == std::wstring::npos ? std::wstring() : Text::toLowerAscii(std::wstring_view(name).substr(dot + 1));
}

std::wstring normalize(std::wstring_view path) {
  if (path.empty()) return {};
  std::wstring slashed(path);
  std::replace(slashed.begin(), slashed.end(), L'\\', L'/');
  std::wstring normal = std::filesystem::path(slashed).lexically_normal().generic_wstring();
  return normal.empty() ? slashed : normal;
}

}  // namespace System::FileName

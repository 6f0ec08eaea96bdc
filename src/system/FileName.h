// Path variables (%AppData%, %Plugin%, ...) and the helpers that take names apart.
// The variable list is filled once, on the main thread, at the first expansion; after
// that any thread may expand paths.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace System::FileName {

// Replaces the variable at the start of `path`, and every other occurrence of that same
// variable, by its directory. Anything else is returned unchanged; idempotent.
std::wstring expand(std::wstring_view path);
void expandInPlace(std::wstring& path);

// "<directory><prefix>_YYYY-MM-DD_hh-mm-ss-mmm.<extension>", expanded. The directory is
// given with its trailing separator, as in "%Backup%/".
std::wstring timeStamped(std::wstring_view directory, std::wstring_view prefix, std::wstring_view extension);

// Name helpers. They accept "/" and "\" as separators, so paths written by another
// system still parse.
std::wstring directoryPart(std::wstring_view path);  // before the last separator, or empty
std::wstring fileName(std::wstring_view path);       // after the last separator
std::wstring baseName(std::wstring_view path);       // file name without its extension
std::wstring extension(std::wstring_view path);      // lower case, without the dot, or empty

// The form in which items keep a media path: "\" separators of files written on
// another system become "/", and "." and ".." steps are resolved in the text. Empty
// stays empty.
std::wstring normalize(std::wstring_view path);

// The variables and their directories in table order, filled by the first call.
const std::vector<std::pair<std::wstring, std::wstring>>& variables();

// Fills the list for an installation in `installDirectory`, creating the data tree.
// Normally the first expansion does this with the executable's directory; tests call it
// to point the program at a directory of their own. Replaces any earlier list.
void initializeVariableList(const std::wstring& installDirectory);

}  // namespace System::FileName

#include <iconv.h>

#include <cerrno>
#include <string>

#include "system/Text.h"

namespace System::Text {

std::wstring fromCp932(std::string_view bytes) {
  // glibc decodes CP932 straight to UTF-32, which is what wchar_t holds here.
  iconv_t converter = iconv_open("WCHAR_T", "CP932");
  if (converter == reinterpret_cast<iconv_t>(-1)) return fromUtf8(bytes);
  std::wstring out;
  out.reserve(bytes.size());
  char* input = const_cast<char*>(bytes.data());
  std::size_t inputLeft = bytes.size();
  wchar_t buffer[256];
  while (inputLeft > 0) {
    char* output = reinterpret_cast<char*>(buffer);
    std::size_t outputLeft = sizeof(buffer);
    const std::size_t result = iconv(converter, &input, &inputLeft, &output, &outputLeft);
    out.append(buffer, (sizeof(buffer) - outputLeft) / sizeof(wchar_t));
    if (result == static_cast<std::size_t>(-1) && errno != E2BIG) {
      // An undecodable or cut-off byte: mark it and carry on with the next one.
      out.push_back(L'\uFFFD');
      ++input;
      --inputLeft;
    }
  }
  iconv_close(converter);
  return out;
}

}  // namespace System::Text

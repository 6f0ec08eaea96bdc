#include "effect/item/ItemText.h"

#include "system/Exception.h"
#include "system/NumberText.h"

namespace Effect::ItemText {

std::int32_t parseInt(std::string_view text, const char* place) {
  std::int32_t value = 0;
  const std::errc error = System::NumberText::readInteger(text, value);
  if (error == std::errc::result_out_of_range) throw System::NoteException(place, "stoi argument out of range");
  if (error != std::errc()) throw System::NoteException(place, "invalid stoi argument");
  return value;
}

double parseDouble(std::string_view text, const char* place) {
  double value = 0.0;
  const std::errc error = System::NumberText::readReal(text, value);
  if (error == std::errc::result_out_of_range) throw System::NoteException(place, "stod argument out of range");
  if (error != std::errc()) throw System::NoteException(place, "invalid stod argument");
  return value;
}

std::vector<double> parseDoubleList(std::string_view text, const char* place) {
  std::vector<double> values;
  for (const std::string_view field : split(text, ',')) values.push_back(parseDouble(field, place));
  return values;
}

std::vector<std::string_view> split(std::string_view text, char delimiter) {
  std::vector<std::string_view> fields;
  std::size_t start = 0;
  while (true) {
    const std::size_t at = text.find(delimiter, start);
    if (at == std::string_view::npos) {
      fields.push_back(text.substr(start));
      return fields;
    }
    fields.push_back(text.substr(start, at - start));
    start = at + 1;
  }
}

}  // namespace Effect::ItemText

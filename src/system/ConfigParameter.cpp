#include "system/ConfigParameter.h"

namespace System::Config {

void Int::load(const IniFile::VALUE& value) { *target_ = value.tryInt().value_or(default_); }

void Int::save(IniFile::VALUE& value) const { value.setInt(*target_); }

void Float::load(const IniFile::VALUE& value) { *target_ = value.tryFloat().value_or(default_); }

void Float::save(IniFile::VALUE& value) const { value.setFloat(*target_); }

void String::load(const IniFile::VALUE& value) { *target_ = value.tryString().value_or(default_); }

void String::save(IniFile::VALUE& value) const { value.setString(*target_); }

}  // namespace System::Config

#include "system/ConfigGroup.h"

#include "system/IniFile.h"

namespace System::Config {

Group::~Group() { store(); }

void Group::load(IniFile* ini) {
  if (section_.empty()) return;
  ini_ = ini;
  if (!ini_) {
    for (const auto& parameter : parameters_) parameter->reset();
    return;
  }
  const IniFile::SectionRef values = ini_->section(section_);
  for (const auto& parameter : parameters_) {
    if (values.contains(parameter->name())) {
      parameter->load(values.find(parameter->name()));
    } else {
      parameter->reset();
    }
  }
}

void Group::store() {
  if (section_.empty() || !ini_) return;
  for (const auto& parameter : parameters_) parameter->save(ini_->value(section_, parameter->name()));
}

}  // namespace System::Config

// The settings of one service: a section of the main ini and the parameters declared
// in it. A service declares its parameters in its constructor, loads the group once,
// and the group stores them back when the service is destroyed. Main thread only.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "system/ConfigParameter.h"

namespace System {
class IniFile;
}

namespace System::Config {

class Group {
 public:
  Group() = default;
  // Stores every parameter into the ini that the group was loaded from.
  ~Group();
  Group(const Group&) = delete;
  Group& operator=(const Group&) = delete;

  // An empty section name makes a group that neither loads nor stores.
  void setSection(std::string section) { section_ = std::move(section); }
  const std::string& section() const noexcept { return section_; }

  // Parameters are kept in declaration order, which is the order of the keys of a
  // fresh file: add<Int>("MaxViewLine", &maxViewLine_, 200).
  template <class P, class... Args>
  P& add(Args&&... args) {
    auto parameter = std::make_unique<P>(std::forward<Args>(args)...);
    P& added = *parameter;
    parameters_.push_back(std::move(parameter));
    return added;
  }

  // A missing section or key gives the default; so does a value of the wrong form. The
  // group remembers `ini` for store(). A null ini (no main ini in this process) sets
  // every default and leaves nothing to store.
  void load(IniFile* ini);
  // Creates the section and the missing keys; keys already present keep their order.
  void store();

 private:
  std::string section_;
  std::vector<std::unique_ptr<Parameter>> parameters_;
  IniFile* ini_ = nullptr;
};

}  // namespace System::Config

// A service's typed setting: binds one member variable to one key of a section of the
// main ini. Parameters live in a System::Config::Group and are loaded and stored on the
// main thread only; other threads read the bound members as plain values.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "system/IniFile.h"

namespace System::Config {

class Parameter {
 public:
  explicit Parameter(std::string name) : name_(std::move(name)) {}
  virtual ~Parameter() = default;
  Parameter(const Parameter&) = delete;
  Parameter& operator=(const Parameter&) = delete;

  const std::string& name() const noexcept { return name_; }

  // A value that cannot be converted sets the default, without a word in the log.
  virtual void load(const IniFile::VALUE& value) = 0;
  virtual void save(IniFile::VALUE& value) const = 0;
  virtual void reset() = 0;

 private:
  std::string name_;
};

// The part of every parameter that holds the bound member and its default.
template <class T>
class Value : public Parameter {
 public:
  Value(std::string name, T* target, T defaultValue)
      : Parameter(std::move(name)), target_(target), default_(std::move(defaultValue)) {}

  void reset() override { *target_ = default_; }

 protected:
  T* target_;
  T default_;
};

// Written in decimal.
class Int : public Value<std::int32_t> {
 public:
  using Value::Value;
  void load(const IniFile::VALUE& value) override;
  void save(IniFile::VALUE& value) const override;
};

// Written as "%f" writes it in the C locale: six decimals.
class Float : public Value<float> {
 public:
  using Value::Value;
  void load(const IniFile::VALUE& value) override;
  void save(IniFile::VALUE& value) const override;
};

// Stored as UTF-8. Empty text is an empty string, so that an empty setting survives
// the round trip through the file.
class String : public Value<std::wstring> {
 public:
  using Value::Value;
  void load(const IniFile::VALUE& value) override;
  void save(IniFile::VALUE& value) const override;
};

}  // namespace System::Config

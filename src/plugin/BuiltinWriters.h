// The writers the program brings with it, in the order of its export menu: AVI (RIFF
// with OpenDML indexes), a single PNG, a single JPEG, and a numbered sequence of either.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "plugin/OutputPlugin.h"

namespace Plugin {

class AviFileSave final : public OutputPlugin {
 public:
  AviFileSave();
  std::wstring getSettingText() const override;
  std::unique_ptr<OutputFile> createFile(const OutputScene& scene, const std::wstring& path,
                                         std::shared_ptr<OutputSource> source) override;
  // The image format of the VideoType setting, and the tag and bits of AudioType.
  Media::Format videoFormat() const;
  std::uint16_t audioTag() const;

 private:
  std::wstring videoType_;
  std::wstring audioType_;
};

class PngFileSave final : public OutputPlugin {
 public:
  PngFileSave();
  std::unique_ptr<OutputFile> createFile(const OutputScene& scene, const std::wstring& path,
                                         std::shared_ptr<OutputSource> source) override;

 private:
  std::int32_t transparent_ = 1;
};

class JpgFileSave final : public OutputPlugin {
 public:
  JpgFileSave();
  std::wstring getSettingText() const override;
  std::unique_ptr<OutputFile> createFile(const OutputScene& scene, const std::wstring& path,
                                         std::shared_ptr<OutputSource> source) override;

 private:
  std::int32_t quality_ = 90;
};

class SequentialFileSave final : public OutputPlugin {
 public:
  SequentialFileSave();
  // A path whose extension is neither png nor jpg (in any case) throws
  // "対応していないファイル拡張子です".
  std::unique_ptr<OutputFile> createFile(const OutputScene& scene, const std::wstring& path,
                                         std::shared_ptr<OutputSource> source) override;

 private:
  std::int32_t transparent_ = 1;
  std::int32_t quality_ = 90;
};

// The name of picture `index` of a sequence of `count`: the path without its extension,
// the index with as many digits as the count's highest index needs (at least the digits
// of the count's power of ten), and the extension.
std::wstring sequenceFileName(const std::wstring& path, std::int32_t count, std::int32_t index);

// The four, in menu order.
std::vector<std::shared_ptr<OutputPlugin>> builtinWriters();

}  // namespace Plugin

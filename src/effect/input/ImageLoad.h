// 画像ファイル: a still image, or one picture of a numbered file sequence.
#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "effect/EffectBase.h"

namespace Effect {

class FileSequence;

class ImageLoad final : public EffectInstance<ImageLoad> {
 public:
  static const EffectInfo kInfo;
  ImageLoad();

  void prepareVideo(Render::ObjectContext& context) override;
  std::unique_ptr<Media::ResourceBuffer> inputVideo(Render::ObjectContext& context) override;

  std::wstring getDisplayName() const override;
  bool itemEvent(ItemEvent& event) override;
  bool acceptsFile(const std::wstring& path) const override;

  // The file shown at the context's moment.
  std::wstring pathAt(const Render::ObjectContext& context);

 private:
  std::shared_ptr<const FileSequence> sequence();

  std::mutex mutex_;
  // The sequence of the file it was listed for; listed again when the file changes.
  std::shared_ptr<const FileSequence> sequence_;
  std::wstring sequencePath_;
};

}  // namespace Effect

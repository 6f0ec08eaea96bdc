// The drawing of an object's finished image into the frame: the transformed quad of the
// 3D set with the user's blend mode, and the whole-pixel copy of an image that already
// stands in frame position. A mixin of the output effects (標準描画, 映像再生, 基本出力),
// which hand it themselves so that it asks them for the object's view record. Drawing
// runs on the object (GPU) thread only.
#pragma once

#include <memory>

namespace Media {
class GraphicsDevice;
class RenderBuffer;
class ResourceBuffer;
}  // namespace Media
namespace Render {
struct ObjectContext;
struct ObjectView;
}  // namespace Render

namespace Effect {

class EffectBase;

class OutputShaderEffect {
 public:
  // What all instances of an effect class share: the constant buffers, the quads by
  // image size and the copy of the frame that the blend modes read. Filled at the first
  // draw, on the GPU thread, for the device of that draw.
  class CommonResource;

  // The transformed draw with the view record of the owner's getOutputView. A view of
  // alpha 0 or below draws nothing.
  void outputImage(Render::ObjectContext& context, Media::RenderBuffer& target, Media::ResourceBuffer& image);
  // The copy by whole pixels, centred on the frame and moved by the view's x and y,
  // truncated: nothing is resampled.
  void outputDirect(Render::ObjectContext& context, Media::RenderBuffer& target, Media::ResourceBuffer& image);

  // The same with a view record the caller made (a scene change draws its two pictures
  // so). The context gives the device, the camera, the group and the geometry.
  void drawImage(const Render::ObjectContext& context, const Render::ObjectView& view, Media::RenderBuffer& target,
                 Media::ResourceBuffer& image);
  void drawDirect(const Render::ObjectContext& context, const Render::ObjectView& view, Media::RenderBuffer& target,
                  Media::ResourceBuffer& image);

 protected:
  explicit OutputShaderEffect(EffectBase& owner);
  ~OutputShaderEffect();
  OutputShaderEffect(const OutputShaderEffect&) = delete;
  OutputShaderEffect& operator=(const OutputShaderEffect&) = delete;

  // For the owner's createCommonResource and shareCommonResource: the prototype makes
  // the resource, its instances take the same one.
  void createOutputResource();
  void shareOutputResource(const EffectBase& prototype);

 private:
  Render::ObjectView objectView(Render::ObjectContext& context) const;
  CommonResource& resource(Media::GraphicsDevice& device);

  EffectBase& owner_;
  std::shared_ptr<CommonResource> common_;
};

}  // namespace Effect

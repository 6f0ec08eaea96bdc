// The built-in effects in registration order: the order of the effect menus.
#include "effect/EffectService.h"
#include "effect/filter/AngleClipFilter.h"
#include "effect/filter/BevelFilter.h"
#include "effect/filter/BloomFilter.h"
#include "effect/filter/BlurDirectionFilter.h"
#include "effect/filter/BlurFilter.h"
#include "effect/filter/BokashiFilter.h"
#include "effect/filter/BokehFilter.h"
#include "effect/filter/BorderBlurFilter.h"
#include "effect/filter/BorderFilter.h"
#include "effect/filter/ChromaKeyFilter.h"
#include "effect/filter/ClipFilter.h"
#include "effect/filter/ColorChangeFilter.h"
#include "effect/filter/ColorFilter.h"
#include "effect/filter/ColorKeyFilter.h"
#include "effect/filter/ColorShiftFilter.h"
#include "effect/filter/DiffusionFilter.h"
#include "effect/filter/DropShadowFilter.h"
#include "effect/filter/EdgeFilter.h"
#include "effect/filter/ExpandedColorFilter.h"
#include "effect/filter/FlashFilter.h"
#include "effect/filter/FrameLineFilter.h"
#include "effect/filter/GlowFilter.h"
#include "effect/filter/GradationFilter.h"
#include "effect/filter/LightFilter.h"
#include "effect/filter/LineClipFilter.h"
#include "effect/filter/LuminanceKeyFilter.h"
#include "effect/filter/MaskFilter.h"
#include "effect/filter/MonochromeFilter.h"
#include "effect/input/AudioBufferLoad.h"
#include "effect/input/AudioLoad.h"
#include "effect/input/BeforeObjectLoad.h"
#include "effect/input/FigureLoad.h"
#include "effect/input/FrameLoad.h"
#include "effect/input/ImageLoad.h"
#include "effect/input/ModelLoad.h"
#include "effect/input/MovieLoad.h"
#include "effect/input/SceneLoad.h"
#include "effect/input/TextInput.h"
#include "effect/input/WaveImageInput.h"
#include "effect/modify/AudioFadeFilter.h"
#include "effect/modify/AudioMonoFilter.h"
#include "effect/modify/AudioVolume.h"
#include "effect/modify/BasicAlpha.h"
#include "effect/modify/BasicAngle.h"
#include "effect/modify/BasicExpand.h"
#include "effect/modify/BasicInvert.h"
#include "effect/modify/BasicMove.h"
#include "effect/modify/BasicScale.h"
#include "effect/modify/DeinterlaceFilter.h"
#include "effect/modify/DisplacementFilter.h"
#include "effect/modify/FadeFilter.h"
#include "effect/modify/ImageLoop.h"
#include "effect/modify/MosaicFilter.h"
#include "effect/modify/NoiseFilter.h"
#include "effect/modify/NoiseReductionFilter.h"
#include "effect/modify/ObjectDivide.h"
#include "effect/modify/PolarFilter.h"
#include "effect/modify/QuakeFilter.h"
#include "effect/modify/RasterFilter.h"
#include "effect/modify/ResizeFilter.h"
#include "effect/modify/RippleFilter.h"
#include "effect/modify/SceneChange.h"
#include "effect/modify/ScriptEdit.h"
#include "effect/modify/ShapeFilter.h"
#include "effect/modify/TempDraw.h"
#include "effect/modify/WipeFilter.h"
#include "effect/output/AudioOutput.h"
#include "effect/output/CameraControl.h"
#include "effect/output/CameraLight.h"
#include "effect/output/CameraLightAmbient.h"
#include "effect/output/CameraLightBloom.h"
#include "effect/output/CameraOption.h"
#include "effect/output/GroupAudioControl.h"
#include "effect/output/GroupControl.h"
#include "effect/output/MaterialSetting.h"
#include "effect/output/MovieOutput.h"
#include "effect/output/ParticleOutput.h"
#include "effect/output/PartEffect.h"
#include "effect/output/SimpleOutput.h"
#include "effect/output/TimeControl.h"
#include "effect/output/VideoOutput.h"

namespace Effect {

void EffectService::registerBuiltinEffects() {
  // Input
  registerEffect<MovieLoad>();
  registerEffect<ImageLoad>();
  registerEffect<AudioLoad>();
  registerEffect<ModelLoad>();
  registerEffect<TextInput>();
  registerEffect<FigureLoad>();
  registerEffect<SceneLoad>();
  registerEffect<FrameLoad>();
  registerEffect<AudioBufferLoad>();
  registerEffect<BeforeObjectLoad>();
  // Output
  registerEffect<VideoOutput>();
  registerEffect<AudioOutput>();
  registerEffect<MovieOutput>();
  registerEffect<SimpleOutput>();
  registerEffect<ParticleOutput>();
  // Control
  registerEffect<PartEffect>();
  registerEffect<GroupControl>();
  registerEffect<GroupAudioControl>();
  registerEffect<CameraControl>();
  registerEffect<TimeControl>();
  // Custom objects
  registerEffect<WaveImageInput>();
  // Colour
  registerEffect<ColorFilter>();
  registerEffect<GradationFilter>();
  registerEffect<MonochromeFilter>();
  registerEffect<ColorChangeFilter>();
  registerEffect<ExpandedColorFilter>();
  // Clipping
  registerEffect<ClipFilter>();
  registerEffect<LineClipFilter>();
  registerEffect<AngleClipFilter>();
  registerEffect<MaskFilter>();
  // Blur
  registerEffect<BokashiFilter>();
  registerEffect<BokehFilter>();
  registerEffect<BlurFilter>();
  registerEffect<BlurDirectionFilter>();
  registerEffect<BorderBlurFilter>();
  // Light
  registerEffect<GlowFilter>();
  registerEffect<BloomFilter>();
  registerEffect<FlashFilter>();
  registerEffect<DiffusionFilter>();
  registerEffect<LightFilter>();
  registerEffect<ColorShiftFilter>();
  // Decoration
  registerEffect<BorderFilter>();
  registerEffect<FrameLineFilter>();
  registerEffect<DropShadowFilter>();
  registerEffect<BevelFilter>();
  // Extraction
  registerEffect<ChromaKeyFilter>();
  registerEffect<LuminanceKeyFilter>();
  registerEffect<ColorKeyFilter>();
  registerEffect<EdgeFilter>();
  // Deformation
  registerEffect<RippleFilter>();
  registerEffect<RasterFilter>();
  registerEffect<PolarFilter>();
  registerEffect<DisplacementFilter>();
  registerEffect<ResizeFilter>();
  // Processing
  registerEffect<ShapeFilter>();
  registerEffect<NoiseReductionFilter>();
  registerEffect<DeinterlaceFilter>();
  registerEffect<NoiseFilter>();
  registerEffect<MosaicFilter>();
  registerEffect<TempDraw>();
  // Placement
  registerEffect<ImageLoop>();
  registerEffect<ObjectDivide>();
  // Transitions
  registerEffect<FadeFilter>();
  registerEffect<WipeFilter>();
  registerEffect<SceneChange>();
  // Animation
  registerEffect<QuakeFilter>();
  registerEffect<ScriptEdit>();
  // Camera
  registerEffect<CameraLight>();
  registerEffect<CameraLightAmbient>();
  registerEffect<CameraLightBloom>();
  registerEffect<MaterialSetting>();
  registerEffect<CameraOption>();
  // Basic
  registerEffect<BasicMove>();
  registerEffect<BasicScale>();
  registerEffect<BasicAlpha>();
  registerEffect<BasicAngle>();
  registerEffect<BasicExpand>();
  registerEffect<BasicInvert>();
  // Audio
  registerEffect<AudioFadeFilter>();
  registerEffect<AudioMonoFilter>();
  registerEffect<AudioVolume>();
}

}  // namespace Effect

#include "plugin/BuiltinReaders.h"

#include <memory>

#include "plugin/AviFileReader.h"
#include "plugin/ImageFileReader.h"
#include "plugin/ImageLibraryReader.h"
#include "plugin/InputService.h"
#include "plugin/WaveFileReader.h"

namespace Plugin {

void registerBuiltinReaders(InputService& service, Media::ImageService& images) {
  service.registerPlugin(std::make_shared<ImageFileReader>());
  service.registerPlugin(std::make_shared<ImageLibraryReader>(images));
  service.registerPlugin(std::make_shared<AviFileReader>());
  service.registerPlugin(std::make_shared<WaveFileReader>());
}

}  // namespace Plugin

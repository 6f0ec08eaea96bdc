// The readers the program brings with it, registered first and in this order, which
// gives them the default priorities 0, 1, 2, 3: uncompressed BMP and TGA, still pictures
// through the image library, AVI, WAV.
#pragma once

namespace Media {
class ImageService;
}

namespace Plugin {

class InputService;

void registerBuiltinReaders(InputService& service, Media::ImageService& images);

}  // namespace Plugin

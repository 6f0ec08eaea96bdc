#include "support/MediaFiles.h"

#include "support/RiffBuilder.h"

namespace PluginTest {

namespace {

std::string code(const std::string& text) { return text.empty() ? std::string(4, '\0') : text; }

std::string chunkId(const AviChunk& chunk, bool video) {
  if (!chunk.id.empty()) return chunk.id;
  return video ? (chunk.key ? "00db" : "00dc") : "01wb";
}

void streamHeader(RiffBuilder& riff, const char* type, const std::string& handler, std::uint32_t scale,
                  std::uint32_t rate, std::uint32_t length, std::uint32_t sampleSize) {
  const std::size_t strh = riff.open("strh");
  riff.code(type);
  riff.code(code(handler));
  riff.u32(0);  // flags
  riff.u32(0);  // priority, language
  riff.u32(0);  // initial frames
  riff.u32(scale);
  riff.u32(rate);
  riff.u32(0);  // start
  riff.u32(length);
  riff.u32(0);  // suggested buffer size
  riff.u32(0xFFFFFFFF);
  riff.u32(sampleSize);
  riff.zeros(8);  // frame rectangle
  riff.close(strh);
}

// An OpenDML super index of `entries` standard indexes; returns where their offsets go.
std::size_t superIndex(RiffBuilder& riff, const char* chunkId, std::size_t entries) {
  const std::size_t indx = riff.open("indx");
  riff.u16(4);
  riff.u8(0);
  riff.u8(0);  // an index of indexes
  riff.u32(static_cast<std::uint32_t>(entries));
  riff.code(chunkId);
  riff.zeros(12);
  const std::size_t offsets = riff.size();
  for (std::size_t i = 0; i < entries; ++i) {
    riff.u64(0);
    riff.u32(0);
    riff.u32(0);
  }
  riff.close(indx);
  return offsets;
}

struct Placed {
  std::size_t header;  // of the chunk
  std::uint32_t size;
  bool key;
  std::string id;
};

// A standard index of `chunks` whose offsets count from `base`.
void standardIndex(RiffBuilder& riff, const char* code, const char* chunkId, const std::vector<Placed>& chunks,
                   std::uint64_t base) {
  const std::size_t ix = riff.open(code);
  riff.u16(2);
  riff.u8(0);
  riff.u8(1);  // an index of chunks
  riff.u32(static_cast<std::uint32_t>(chunks.size()));
  riff.code(chunkId);
  riff.u64(base);
  riff.u32(0);
  for (const Placed& chunk : chunks) {
    riff.u32(static_cast<std::uint32_t>(chunk.header + 8 - base));
    riff.u32(chunk.size | (chunk.key ? 0u : 0x80000000u));
  }
  riff.close(ix);
}

}  // namespace

std::string makeAvi(const AviContent& content) {
  RiffBuilder riff;
  const std::size_t top = riff.open("RIFF", "AVI ");
  const std::size_t hdrl = riff.open("LIST", "hdrl");
  const std::size_t avih = riff.open("avih");
  riff.u32(33333);
  riff.zeros(12);
  riff.u32(static_cast<std::uint32_t>(content.frames.size()));
  riff.u32(0);
  riff.u32(content.waveFormat.empty() ? 1 : 2);
  riff.u32(0);
  riff.u32(content.width);
  riff.u32(content.height);
  riff.zeros(16);
  riff.close(avih);
  const bool avi2 = content.index == AviIndex::Avi2;
  if (avi2) {
    const std::size_t odml = riff.open("LIST", "odml");
    riff.chunk("dmlh", le32(static_cast<std::uint32_t>(content.frames.size())));
    riff.close(odml);
  }

  const std::size_t videoList = riff.open("LIST", "strl");
  streamHeader(riff, "vids", content.handler, 1, 30, content.videoLength.value_or(static_cast<std::uint32_t>(content.frames.size())), 0);
  const std::size_t strf = riff.open("strf");
  riff.u32(40);
  riff.u32(content.width);
  riff.u32(content.height);
  riff.u16(1);
  riff.u16(content.bits);
  riff.code(code(content.compression));
  riff.u32((content.bits / 8 * content.width + 3) / 4 * 4 * content.height);
  riff.zeros(16);
  riff.raw(content.videoExtra);
  riff.close(strf);
  // The video's frames go into two standard indexes, so that the super index has two.
  const std::size_t videoSuper = avi2 ? superIndex(riff, "00dc", 2) : 0;
  riff.close(videoList);

  std::size_t audioSuper = 0;
  const bool hasAudio = !content.waveFormat.empty();
  const std::uint16_t blockAlign =
      hasAudio ? static_cast<std::uint16_t>(static_cast<unsigned char>(content.waveFormat[12]) |
                                            static_cast<unsigned char>(content.waveFormat[13]) << 8)
               : 0;
  if (hasAudio) {
    const std::uint32_t avgBytes = static_cast<unsigned char>(content.waveFormat[8]) |
                                   static_cast<unsigned char>(content.waveFormat[9]) << 8 |
                                   static_cast<unsigned char>(content.waveFormat[10]) << 16 |
                                   static_cast<std::uint32_t>(static_cast<unsigned char>(content.waveFormat[11])) << 24;
    std::size_t audioBytes = 0;
    for (const AviChunk& chunk : content.audio) audioBytes += chunk.data.size();
    const std::size_t audioList = riff.open("LIST", "strl");
    streamHeader(riff, "auds", "", blockAlign, avgBytes,
                 content.audioLength.value_or(blockAlign ? static_cast<std::uint32_t>(audioBytes / blockAlign) : 0),
                 content.audioSampleSize.value_or(blockAlign));
    riff.chunk("strf", content.waveFormat);
    if (avi2) audioSuper = superIndex(riff, "01wb", 1);
    riff.close(audioList);
  }
  riff.close(hdrl);

  const std::size_t movi = riff.open("LIST", "movi");
  const std::size_t moviCode = movi + 4;
  std::vector<Placed> video;
  std::vector<Placed> audio;
  for (std::size_t i = 0; i < std::max(content.frames.size(), content.audio.size()); ++i) {
    if (i < content.frames.size()) {
      const AviChunk& frame = content.frames[i];
      video.push_back({riff.size(), static_cast<std::uint32_t>(frame.data.size()), frame.key, chunkId(frame, true)});
      riff.chunk(video.back().id, frame.data);
    }
    if (hasAudio && i < content.audio.size()) {
      const AviChunk& chunk = content.audio[i];
      audio.push_back({riff.size(), static_cast<std::uint32_t>(chunk.data.size()), true, chunkId(chunk, false)});
      riff.chunk(audio.back().id, chunk.data);
    }
  }
  if (avi2) {
    const std::size_t half = video.size() / 2;
    const std::vector<Placed> first(video.begin(), video.begin() + static_cast<std::ptrdiff_t>(half));
    const std::vector<Placed> second(video.begin() + static_cast<std::ptrdiff_t>(half), video.end());
    riff.patch64(videoSuper, riff.size());
    riff.patch32(videoSuper + 8, static_cast<std::uint32_t>(32 + 8 * first.size()));
    standardIndex(riff, "ix00", "00dc", first, moviCode);
    riff.patch64(videoSuper + 16, riff.size());
    riff.patch32(videoSuper + 24, static_cast<std::uint32_t>(32 + 8 * second.size()));
    standardIndex(riff, "ix00", "00dc", second, moviCode + 4);
    if (hasAudio) {
      riff.patch64(audioSuper, riff.size());
      riff.patch32(audioSuper + 8, static_cast<std::uint32_t>(32 + 8 * audio.size()));
      standardIndex(riff, "ix01", "01wb", audio, moviCode);
    }
  }
  riff.close(movi);

  if (content.index == AviIndex::Absolute || content.index == AviIndex::Relative) {
    const std::size_t idx1 = riff.open("idx1");
    const std::size_t base = content.index == AviIndex::Absolute ? 0 : moviCode;
    std::size_t v = 0;
    std::size_t a = 0;
    // In file order, as writers keep it.
    while (v < video.size() || a < audio.size()) {
      const bool takeVideo = a >= audio.size() || (v < video.size() && video[v].header < audio[a].header);
      const Placed& chunk = takeVideo ? video[v++] : audio[a++];
      riff.code(chunk.id);
      riff.u32(chunk.key ? 0x10 : 0);
      riff.u32(static_cast<std::uint32_t>(chunk.header - base));
      riff.u32(chunk.size);
    }
    riff.close(idx1);
  }
  riff.close(top);
  return riff.bytes();
}

std::string waveFormat(std::uint16_t tag, std::uint16_t channels, std::uint32_t rate, std::uint16_t bits,
                       std::optional<std::string> extra) {
  const auto blockAlign = static_cast<std::uint16_t>(channels * (bits / 8));
  return waveFormat(tag, channels, rate, bits, blockAlign, blockAlign * rate, std::move(extra));
}

std::string waveFormat(std::uint16_t tag, std::uint16_t channels, std::uint32_t rate, std::uint16_t bits,
                       std::uint16_t blockAlign, std::uint32_t avgBytes, std::optional<std::string> extra) {
  std::string format = le16(tag) + le16(channels) + le32(rate) + le32(avgBytes) + le16(blockAlign) + le16(bits);
  if (extra) format += le16(static_cast<std::uint16_t>(extra->size())) + *extra;
  return format;
}

std::string makeWav(const std::string& format, const std::string& data, std::optional<std::uint32_t> dataSize) {
  RiffBuilder riff;
  const std::size_t top = riff.open("RIFF", "WAVE");
  riff.chunk("fmt ", format);
  const std::size_t chunk = riff.open("data");
  riff.raw(data);
  riff.close(chunk);
  if (dataSize) riff.patch32(chunk, *dataSize);
  riff.close(top);
  return riff.bytes();
}

std::string makeBmp(std::int32_t width, std::int32_t height, std::uint16_t bits, const std::vector<std::string>& rows,
                    std::uint32_t compression) {
  std::string pixels;
  for (std::string row : rows) {
    row.resize((row.size() + 3) / 4 * 4, '\0');
    pixels += row;
  }
  RiffBuilder bmp;
  bmp.raw("BM");
  bmp.u32(static_cast<std::uint32_t>(54 + pixels.size()));
  bmp.u32(0);
  bmp.u32(54);
  bmp.u32(40);
  bmp.u32(static_cast<std::uint32_t>(width));
  bmp.u32(static_cast<std::uint32_t>(height));
  bmp.u16(1);
  bmp.u16(bits);
  bmp.u32(compression);
  bmp.u32(static_cast<std::uint32_t>(pixels.size()));
  bmp.zeros(16);
  bmp.raw(pixels);
  return bmp.bytes();
}

std::string makeTga(std::uint16_t width, std::uint16_t height, std::uint8_t depth, std::uint8_t descriptor,
                    const std::string& pixels, std::uint8_t imageType, const std::string& id,
                    std::uint16_t colourMapEntries) {
  RiffBuilder tga;
  tga.u8(static_cast<std::uint8_t>(id.size()));
  tga.u8(colourMapEntries != 0 ? 1 : 0);
  tga.u8(imageType);
  tga.u16(0);
  tga.u16(colourMapEntries);
  tga.u8(colourMapEntries != 0 ? 24 : 0);
  tga.u32(0);  // origin
  tga.u16(width);
  tga.u16(height);
  tga.u8(depth);
  tga.u8(descriptor);
  tga.raw(id);
  tga.zeros(std::size_t{colourMapEntries} * 3);
  tga.raw(pixels);
  return tga.bytes();
}

}  // namespace PluginTest

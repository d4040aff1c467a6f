// JPEG 2000, by OpenJPEG.
#include <openjpeg.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <thread>

#include "radiograph/decoding/codestream_size.h"
#include "radiograph/decoding/dicom_picture.h"

namespace Radiography {

namespace {

// More tiles than any device writes; OpenJPEG takes some kilobytes for each before it decodes.
constexpr std::uint32_t kMostTiles = 4096;
constexpr int kMostThreads = 4;

struct Source {
  Bytes bytes;
  std::size_t at = 0;
};

OPJ_SIZE_T Read(void* to, OPJ_SIZE_T size, void* user) {
  auto& source = *static_cast<Source*>(user);
  const std::size_t taken = std::min<std::size_t>(size, source.bytes.size() - source.at);
  if (taken == 0) return static_cast<OPJ_SIZE_T>(-1);
  std::memcpy(to, source.bytes.data() + source.at, taken);
  source.at += taken;
  return taken;
}

OPJ_BOOL Seek(OPJ_OFF_T to, void* user) {
  auto& source = *static_cast<Source*>(user);
  if (to < 0 || static_cast<std::size_t>(to) > source.bytes.size()) return OPJ_FALSE;
  source.at = static_cast<std::size_t>(to);
  return OPJ_TRUE;
}

OPJ_OFF_T Skip(OPJ_OFF_T by, void* user) {
  auto& source = *static_cast<Source*>(user);
  const auto rest = static_cast<OPJ_OFF_T>(source.bytes.size() - source.at);
  if (by < 0) return -1;
  source.at += static_cast<std::size_t>(std::min(by, rest));
  return by <= rest ? by : -1;
}

// OpenJPEG's streams and codecs are pointers to anything.
template <auto destroy>
struct By {
  template <class Thing>
  void operator()(Thing* thing) const {
    destroy(thing);
  }
};
using Stream = std::unique_ptr<opj_stream_t, By<opj_stream_destroy>>;
using Codec = std::unique_ptr<opj_codec_t, By<opj_destroy_codec>>;
using Image = std::unique_ptr<opj_image_t, By<opj_image_destroy>>;

Stream OpenStream(Source& source) {
  Stream stream(opj_stream_default_create(OPJ_TRUE));
  if (stream == nullptr) throw std::bad_alloc();
  opj_stream_set_user_data(stream.get(), &source, nullptr);
  opj_stream_set_user_data_length(stream.get(), source.bytes.size());
  opj_stream_set_read_function(stream.get(), Read);
  opj_stream_set_seek_function(stream.get(), Seek);
  opj_stream_set_skip_function(stream.get(), Skip);
  return stream;
}

Codec OpenCodec() {
  Codec codec(opj_create_decompress(OPJ_CODEC_J2K));
  if (codec == nullptr) throw std::bad_alloc();
  opj_dparameters_t parameters;
  opj_set_default_decoder_parameters(&parameters);
  opj_setup_decoder(codec.get(), &parameters);
  opj_decoder_set_strict_mode(codec.get(), OPJ_TRUE);
  const int cores = static_cast<int>(std::thread::hardware_concurrency());
  opj_codec_set_threads(codec.get(), std::clamp(cores, 1, kMostThreads));
  return codec;
}

Image Decompress(Source& source) {
  const Stream stream = OpenStream(source);
  const Codec codec = OpenCodec();
  opj_image_t* header = nullptr;
  if (!opj_read_header(stream.get(), codec.get(), &header)) Refuse(ReadTrouble::Damaged);
  Image image(header);
  if (!opj_decode(codec.get(), stream.get(), image.get())) Refuse(ReadTrouble::CutShort);
  if (!opj_end_decompress(codec.get(), stream.get())) Refuse(ReadTrouble::CutShort);
  return image;
}

// From OpenJPEG's numbers to words with `precision` bits, negative ones in two's complement.
std::vector<std::uint16_t> Words(const opj_image_comp_t& component, std::size_t count) {
  std::vector<std::uint16_t> words(count);
  const auto mask = static_cast<std::uint16_t>((1U << component.prec) - 1U);
  std::transform(component.data, component.data + count, words.begin(), [mask](OPJ_INT32 value) {
    return static_cast<std::uint16_t>(static_cast<std::uint32_t>(value) & mask);
  });
  return words;
}

void Check(const CodestreamSize& size, const PixelFormat& format) {
  if (size.components != 1) Refuse(ReadTrouble::Colour);
  if (size.width != static_cast<std::uint32_t>(format.width) ||
      size.height != static_cast<std::uint32_t>(format.height)) {
    Refuse(ReadTrouble::Contradiction,
           "the compressed picture has another size than the file says");
  }
  if (size.bits > 16) {
    Refuse(ReadTrouble::Contradiction, "the compressed picture has more bits than the file says");
  }
  if (size.tiles > kMostTiles) Refuse(ReadTrouble::Damaged);
}

}  // namespace

PixelWords DecodeJpeg2000(Bytes codestream, const PixelFormat& format) {
  const auto size = Jpeg2000Size(codestream);
  if (!size) Refuse(ReadTrouble::Damaged);
  Check(*size, format);
  Source source{codestream};
  const Image image = Decompress(source);
  const opj_image_comp_t& component = image->comps[0];
  const auto width = static_cast<OPJ_UINT32>(format.width);
  const auto height = static_cast<OPJ_UINT32>(format.height);
  if (image->numcomps != 1 || component.data == nullptr || component.w != width ||
      component.h != height || component.prec < 1 || component.prec > 16) {
    Refuse(ReadTrouble::Damaged);
  }
  if (component.sgnd != 0 && !format.isSigned) {
    Refuse(ReadTrouble::Contradiction, "the compressed picture is signed, the file is not");
  }
  return {Words(component, std::size_t{width} * height), static_cast<int>(component.prec), false};
}

}  // namespace Radiography

#include "decoder/WmfRenderer.h"

#include <libwmf/api.h>
#include <libwmf/gd.h>

#include "decoder/Fit.h"

namespace decoder {

namespace {

// The library's handle, destroyed on every way out.
class WmfSession {
 public:
  WmfSession() {
    wmfAPI_Options options{};
    options.function = wmf_gd_function;
    const unsigned long flags = WMF_OPT_FUNCTION | WMF_OPT_IGNORE_NONFATAL;
    if (wmf_api_create(&api_, flags, &options) != wmf_E_None) api_ = nullptr;
  }
  ~WmfSession() {
    if (api_) wmf_api_destroy(api_);
  }
  WmfSession(const WmfSession&) = delete;
  WmfSession& operator=(const WmfSession&) = delete;
  wmfAPI* api() const { return api_; }

 private:
  wmfAPI* api_ = nullptr;
};

// gd keeps 7 bits of transparency, 127 being fully transparent.
QRgb FromGd(int pixel) {
  const int gdAlpha = (pixel >> 24) & 0x7F;
  const int alpha = 255 - (gdAlpha * 255 + 63) / 127;
  return qRgba((pixel >> 16) & 0xFF, (pixel >> 8) & 0xFF, pixel & 0xFF, alpha);
}

}  // namespace

QImage RenderWmf(const QByteArray& bytes, const QSize& fitInto) {
  WmfSession session;
  wmfAPI* api = session.api();
  if (!api) return QImage();
  QByteArray data = bytes;  // the library wants writable memory
  if (wmf_mem_open(api, reinterpret_cast<unsigned char*>(data.data()), long(data.size())) !=
      wmf_E_None)
    return QImage();
  wmfD_Rect bounds;
  if (wmf_scan(api, 0, &bounds) != wmf_E_None) return QImage();
  unsigned int width = 0, height = 0;
  if (wmf_display_size(api, &width, &height, 96, 96) != wmf_E_None) return QImage();
  const QSize size = OutputSize(QSize(int(qMin(width, 1u << 20)), int(qMin(height, 1u << 20))),
                                fitInto);

  wmf_gd_t* device = WMF_GD_GetData(api);
  device->type = wmf_gd_image;
  device->width = unsigned(size.width());
  device->height = unsigned(size.height());
  device->bbox = bounds;
  if (wmf_play(api, 0, &bounds) != wmf_E_None || !device->gd_image) return QImage();

  const int* pixels = wmf_gd_image_pixels(device->gd_image);
  if (!pixels) return QImage();
  QImage image(size, QImage::Format_ARGB32);
  if (image.isNull()) return QImage();
  for (int y = 0; y < size.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < size.width(); ++x) line[x] = FromGd(pixels[qsizetype(y) * size.width() + x]);
  }
  return image;
}

}  // namespace decoder

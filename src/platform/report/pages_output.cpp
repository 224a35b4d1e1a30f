#include "platform/report/page_data.h"
#include "platform/report/pages.h"

#include <QFileInfo>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace jxc::report {

namespace pages_output_detail {

constexpr int kPdfDpi = 1200;

[[noreturn]] void fail(const QString& path, const QString& reason) {
  throw std::runtime_error(QStringLiteral("文件“%1”无法写入：%2。").arg(path, reason).toStdString());
}

}  // namespace pages_output_detail

QImage Pages::image(int page, double dpi) const {
  const QSizeF millimetres = size(page);
  const double scale = dpi / 25.4;
  QImage image(static_cast<int>(std::lround(millimetres.width() * scale)),
               static_cast<int>(std::lround(millimetres.height() * scale)), QImage::Format_RGB32);
  if (image.isNull()) return image;
  image.setDotsPerMeterX(static_cast<int>(std::lround(dpi / 0.0254)));
  image.setDotsPerMeterY(image.dotsPerMeterX());
  image.fill(Qt::white);
  QPainter painter(&image);
  paint(painter, page, scale);
  return image;
}

void Pages::writePdf(const QString& path, int from, int to) const {
  using namespace pages_output_detail;
  const int first = std::max(1, from) - 1, end = to > 0 ? std::min(to, count()) : count();
  if (first >= end) fail(path, QStringLiteral("没有页面"));
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) fail(path, file.errorString());
  {
    QPdfWriter writer(&file);
    writer.setResolution(kPdfDpi);
    writer.setTitle(title());
    const auto usePage = [&](int page) {
      writer.setPageSize(QPageSize(size(page), QPageSize::Millimeter, {}, QPageSize::ExactMatch));
      writer.setPageMargins(QMarginsF());
    };
    usePage(first);
    QPainter painter;
    if (!painter.begin(&writer)) fail(path, file.errorString());
    for (int page = first; page < end; ++page) {
      if (page > first) {
        usePage(page);
        writer.newPage();
      }
      paint(painter, page, kPdfDpi / 25.4);
    }
    painter.end();
  }
  if (!file.commit()) fail(path, file.errorString());
}

QStringList Pages::writePng(const QString& path, double dpi) const {
  using namespace pages_output_detail;
  if (isEmpty()) fail(path, QStringLiteral("没有页面"));
  const QFileInfo info(path);
  const QString suffix = info.suffix().isEmpty() ? QStringLiteral("png") : info.suffix();
  const QString base = info.suffix().isEmpty() ? path : path.chopped(suffix.size() + 1);
  QStringList written;
  for (int page = 0; page < count(); ++page) {
    const QString name = (page == 0 ? base : QStringLiteral("%1-%2").arg(base).arg(page + 1)) + u'.' + suffix;
    const QImage picture = image(page, dpi);
    if (picture.isNull()) fail(name, QStringLiteral("图片太大"));
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || !picture.save(&file, "PNG") || !file.commit()) {
      fail(name, file.errorString());
    }
    written << name;
  }
  return written;
}

}  // namespace jxc::report

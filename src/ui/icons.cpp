#include "ui/icons.h"

#include "ui/display.h"
#include "ui/skin.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>

#include <algorithm>

namespace jxc::ui {
namespace icons_detail {

struct Drawing {
  std::string_view name;
  std::string_view path;         // lines in the ink colour
  std::string_view accent = {};  // lines in the accent colour
};

// clang-format off
constexpr Drawing kDrawings[] = {
    {"sheet", "M6 3h9l3 3v15H6z", "M9 9h6M9 13h6M9 17h4"},
    {"truck-in", "M3 7h10v9H3zM13 10h4l4 3v3h-8M7 19a2 2 0 1 0 0-4 2 2 0 0 0 0 4zM17 19a2 2 0 1 0 0-4 2 2 0 0 0 0 4z", "M8 2v7M5.500 6.500 8 9l2.500-2.500"},
    {"truck-out", "M3 7h10v9H3zM13 10h4l4 3v3h-8M7 19a2 2 0 1 0 0-4 2 2 0 0 0 0 4zM17 19a2 2 0 1 0 0-4 2 2 0 0 0 0 4z", "M8 13V4M5.500 6.500 8 4l2.500 2.500"},
    {"box-in", "M4 11v9h16v-9M4 11l3-4M20 11l-3-4", "M12 3v11M8.500 10.500 12 14l3.500-3.500"},
    {"box-out", "M4 11v9h16v-9M4 11l3-4M20 11l-3-4", "M12 15V3M8.500 6.500 12 3l3.500 3.500"},
    {"ledger", "M5 3h13a1 1 0 0 1 1 1v16a1 1 0 0 1-1 1H5zM5 3v18M9 3v18", "M12 8h4M12 12h4M12 16h4"},
    {"search", "M10.500 17a6.500 6.500 0 1 0 0-13 6.500 6.500 0 0 0 0 13z", "M15.500 15.500 21 21"},
    {"shelf", "M3 3v18M21 3v18M3 11h18M3 19h18", "M6 11V6h4v5M13 11V8h5v3M6 19v-4h5v4M14 19v-5h4v5"},
    {"glasses", "M2 12l2-5M22 12l-2-5M10 14c.5-1.500 3.500-1.500 4 0", "M6 18a4 4 0 1 0 0-8 4 4 0 0 0 0 8zM18 18a4 4 0 1 0 0-8 4 4 0 0 0 0 8z"},
    {"return", "M4 8h11a5 5 0 0 1 0 10H8", "M8 4 4 8l4 4"},
    {"parcel", "M3 7l9-4 9 4v10l-9 4-9-4zM12 11v10M3 7l9 4 9-4", "M7.500 5l9 4v4"},
    {"transfer", "M3 5h7v6H3zM14 13h7v6h-7z", "M13 8h6v3M16.500 9 19 11.500 21.500 9M11 16H5v-3"},
    {"clipboard", "M6 5h12v16H6zM9 3h6v4H9z", "M9 12l2 2 4-4M9 17h6"},
    {"scale", "M12 4v16M7 20h10M5 7h14", "M5 7l-3 7h6zM19 7l-3 7h6z"},
    {"split", "M4 4h7v7H4z", "M14 13h6v7h-6zM4 15h6v5H4zM14 4h6v5h-6z"},
    {"bell", "M6 17V11a6 6 0 0 1 12 0v6l2 1H4z", "M10 21h4M12 3v2"},
    {"chart", "M4 3v17h17", "M8 17v-5M12 17V7M16 17v-8"},
    {"note-in", "M5 3h10l4 4v14H5z", "M12 8v8M8.500 12.500 12 16l3.500-3.500"},
    {"note-out", "M5 3h10l4 4v14H5z", "M12 16V8M8.500 11.500 12 8l3.500 3.500"},
    {"coin-in", "M12 21a7 7 0 1 0 0-14 7 7 0 0 0 0 14z", "M9 11l3 3 3-3M9 14.500h6M12 14v4M12 1v4M10.500 3.500 12 5l1.500-1.500"},
    {"coin-out", "M12 21a7 7 0 1 0 0-14 7 7 0 0 0 0 14z", "M9 11l3 3 3-3M9 14.500h6M12 14v4M12 5V1M10.500 2.500 12 1l1.500 1.500"},
    {"invoice", "M5 3h14v18l-2.500-1.500L14 21l-2-1.500L10 21l-2.500-1.500L5 21z", "M8.500 8h7M8.500 12h7M8.500 16h4"},
    {"calendar", "M4 5h16v16H4zM4 10h16M8 3v4M16 3v4", "M8 14h2M14 14h2M8 17.500h2"},
    {"person", "M12 11a4 4 0 1 0 0-8 4 4 0 0 0 0 8z", "M4 21c0-5 3.500-7 8-7s8 2 8 7"},
    {"people", "M9 11a3.500 3.500 0 1 0 0-7 3.500 3.500 0 0 0 0 7zM16 11a3 3 0 1 0 0-6", "M2.500 20c0-4 2.500-6 6.500-6s6.500 2 6.500 6M17.500 14c2.500.5 4 2.500 4 6"},
    {"podium", "M9 21V9h6v12M3 21v-8h6M15 21v-5h6v5z", "M12 2v4M10.500 3.500 12 2"},
    {"trend", "M4 3v17h17", "M7 15l4-5 3 3 6-8M16 5h4v4"},
    {"phone", "M7 2h10v20H7zM11 19h2", "M10 8l4 3M14 8l-4 3M9.500 14h5"},
    {"till", "M4 12h16v8H4zM7 12V5h10v7", "M9.500 8h5M8 16h8"},
    {"factory", "M3 21V10l6 4v-4l6 4V4h4v17z", "M7 17h2M12 17h2"},
    {"contract", "M5 3h10l4 4v14H5z", "M8 9h6M8 13h4M11 18c1.500-3 2-3 2.500-1s1 1 2.500 0"},
    {"lend", "M3 10h8v8H3z", "M14 8h5a2 2 0 0 1 2 2v4M18.500 12 21 14.500 23.500 12M7 10V6"},
    {"tag", "M3 12V4h8l10 9-8 8z", "M7.500 8.500h.1M11 13l3-2.500"},
    {"gift", "M4 11h16v10H4zM3 7h18v4H3z", "M12 7v14M12 7C9 7 7 6 8 4s4 0 4 3c0-3 3-5 4-3s-1 3-4 3"},
    {"bank", "M3 9l9-6 9 6zM4 21h16", "M6 18v-6M10 18v-6M14 18v-6M18 18v-6"},
    {"building", "M5 21V3h9v18M14 9h5v12M3 21h18", "M8 7h3M8 11h3M8 15h3M16.500 13h.1M16.500 17h.1"},
    {"key", "M8 16a5 5 0 1 0 0-10 5 5 0 0 0 0 10z", "M12.500 11H21v4M17 11v3"},
    {"card", "M3 6h18v13H3z", "M3 10h18M7 15h4"},
    {"gear", "M12 15.500a3.500 3.500 0 1 0 0-7 3.500 3.500 0 0 0 0 7z", "M12 2v4M12 18v4M2 12h4M18 12h4M5 5l2.800 2.800M16.200 16.200 19 19M19 5l-2.800 2.800M7.800 16.200 5 19"},
    {"wrench", "M14 6a5 5 0 0 1 6-2l-3 3 1 2 2 1 2-3a5 5 0 0 1-7 6", "M14 10 4 20l-1-1 10-10"},
    {"database", "M4 6c0-4 16-4 16 0s-16 4-16 0zM4 6v12c0 4 16 4 16 0V6", "M4 12c0 4 16 4 16 0"},
    {"broom", "M19 3l-7 8", "M8 10l6 5-3 6H4zM8 21l1-3"},
    {"barcode", "M4 5v14M20 5v14", "M7 5v14M10 5v14M12 5v14M15 5v14M17.500 5v14"},
    {"palette", "M12 3a9 9 0 1 0 0 18c2 0 1-3 2-4s6 1 7-3c1-6-4-11-9-11z", "M8 9h.1M12 7h.1M16 9.500h.1M7 13h.1"},
    {"note", "M5 4h14v11l-5 5H5zM14 20v-5h5", "M8 9h8M8 13h4"},
    {"help", "M12 21a9 9 0 1 0 0-18 9 9 0 0 0 0 18z", "M9.500 9.500a2.500 2.500 0 1 1 3.500 2.500c-1 .5-1 1-1 2M12 17h.1"},
    {"swap", "M9 9a3 3 0 1 0 0-6 3 3 0 0 0 0 6zM3 18c0-4 2-6 6-6", "M13 15h8l-2.500-2.500M21 19h-8l2.500 2.500"},
    {"exit", "M14 4H5v16h9", "M10 12h11M17.500 8.500 21 12l-3.500 3.500"},
    {"lock", "M5 11h14v10H5z", "M8 11V8a4 4 0 0 1 8 0v3M12 15v2"},
    {"field-calendar", "M5 6h14v14H5zM5 10h14M9 4v4M15 4v4"},
    {"field-list", "M6 8h12M6 12h12M6 16h12"},
};
// clang-format on

const Drawing* find(std::string_view name) {
  const auto found =
      std::find_if(std::begin(kDrawings), std::end(kDrawings), [&](const auto& d) { return d.name == name; });
  return found == std::end(kDrawings) ? nullptr : &*found;
}

QByteArray svg(const Drawing& drawing, const QColor& ink, const QColor& accent) {
  const QString text =
      QStringLiteral(
          "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 24 24'><g fill='none' stroke-width='1.6' "
          "stroke-linecap='round' stroke-linejoin='round'><path stroke='%1' d='%2'/><path stroke='%3' "
          "d='%4'/></g></svg>")
          .arg(ink.name(), qs(drawing.path), accent.name(),
               drawing.accent.empty() ? QStringLiteral("M0 0") : qs(drawing.accent));
  return text.toUtf8();
}

/// Draws at the size that is asked for, with the colours of the moment, so that a change of skin needs no new icons.
class Engine : public QIconEngine {
 public:
  explicit Engine(const Drawing& drawing) : drawing_(drawing) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const auto palette = QApplication::palette();
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const QColor ink = palette.color(group, QPalette::ButtonText);
    const QColor accent = mode == QIcon::Disabled ? ink : skinColour(QStringLiteral("accent"));
    QSvgRenderer renderer(svg(drawing_, ink, accent));
    renderer.render(painter, rect);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap result(size);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return result;
  }

  QIconEngine* clone() const override { return new Engine(*this); }

 private:
  const Drawing& drawing_;
};

}  // namespace icons_detail

QIcon icon(std::string_view name) {
  const auto* drawing = icons_detail::find(name);
  return QIcon(new icons_detail::Engine(drawing ? *drawing : icons_detail::kDrawings[0]));
}

bool hasIcon(std::string_view name) {
  return icons_detail::find(name) != nullptr;
}

}  // namespace jxc::ui

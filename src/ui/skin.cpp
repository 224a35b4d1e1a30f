#include "ui/skin.h"

#include "core/startup.h"
#include "ui/skin_style.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QFontDatabase>
#include <QHash>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QTextStream>
#include <QWidget>

// The arrows of the style sheet; a static library's resources have to be asked for, and outside of any namespace.
static void takeInSkinResources() {
  Q_INIT_RESOURCE(look);
}

namespace jxc::ui {
namespace skin_detail {

struct Skin {
  QString name;
  QHash<QString, QColor> colours;
  QString style;
};

QHash<QString, QColor> usualColours() {
  QHash<QString, QColor> colours;
  for (const auto& [name, value] : kUsualColours)
    colours.insert(QString::fromLatin1(name), QColor(QLatin1String(value)));
  return colours;
}

Skin& current() {
  static Skin skin{QString::fromUtf16(usualSkin), usualColours(), {}};
  return skin;
}

// A file of "name=#rrggbb" lines; what follows a line "[style]" is added to the style sheet.
bool read(const QString& name, Skin& skin) {
  if (name.isEmpty() || name.contains(u'/') || name.contains(u'\\') || programDirectory().isEmpty()) return false;
  QFile file(suppliedPath(QStringLiteral("skinfiles/") + name + QStringLiteral(".skinres")));
  if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) return false;
  skin = {name, usualColours(), {}};
  QTextStream in(&file);
  while (!in.atEnd()) {
    const QString line = in.readLine().trimmed();
    if (line == u"[style]") {
      skin.style = in.readAll();
      break;
    }
    const auto equals = line.indexOf(u'=');
    if (line.startsWith(u'#') || equals < 0) continue;
    const QColor colour(line.mid(equals + 1).trimmed());
    if (colour.isValid()) skin.colours.insert(line.left(equals).trimmed(), colour);
  }
  return true;
}

QPalette paletteOf(const Skin& skin) {
  const auto colour = [&](const char* name) { return skin.colours.value(QString::fromLatin1(name)); };
  QPalette palette;
  palette.setColor(QPalette::Window, colour("window"));
  palette.setColor(QPalette::WindowText, colour("text"));
  palette.setColor(QPalette::Base, colour("base"));
  palette.setColor(QPalette::AlternateBase, colour("zebra"));
  palette.setColor(QPalette::Text, colour("text"));
  palette.setColor(QPalette::PlaceholderText, colour("muted"));
  palette.setColor(QPalette::Button, colour("button"));
  palette.setColor(QPalette::ButtonText, colour("text"));
  palette.setColor(QPalette::Highlight, colour("selection"));
  palette.setColor(QPalette::HighlightedText, colour("selectionText"));
  palette.setColor(QPalette::ToolTipBase, colour("base"));
  palette.setColor(QPalette::ToolTipText, colour("text"));
  palette.setColor(QPalette::Link, colour("accent"));
  palette.setColor(QPalette::Mid, colour("line"));
  palette.setColor(QPalette::Dark, colour("line"));
  palette.setColor(QPalette::Light, colour("base"));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, colour("muted"));
  }
  return palette;
}

QString styleOf(const Skin& skin) {
  QString style = QString::fromUtf8(kStyle) + skin.style;
  // Longest names first, so that @selectionText is not taken for @selection.
  auto names = skin.colours.keys();
  std::sort(names.begin(), names.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
  for (const auto& name : names)
    style.replace(u'@' + name, skin.colours.value(name).name());
  return style;
}

void apply(Skin skin) {
  current() = std::move(skin);
  if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return;
  takeInSkinResources();
  if (QApplication::style()->name() != u"fusion")
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("fusion")));
  QApplication::setPalette(paletteOf(current()));
  QFont font;
  font.setFamilies(fontFamilies());
  font.setPointSizeF(10);
  QApplication::setFont(font);
  qApp->setStyleSheet(styleOf(current()));
}

}  // namespace skin_detail

QStringList skinNames() {
  QStringList names{QString::fromUtf16(usualSkin)};
  if (programDirectory().isEmpty()) return names;
  for (const QString& place : {programDirectory(), packageDirectory()}) {
    if (place.isEmpty()) continue;
    const QDir folder(place + QStringLiteral("/skinfiles"));
    for (const auto& file : folder.entryInfoList({QStringLiteral("*.skinres")}, QDir::Files, QDir::Name)) {
      if (!names.contains(file.completeBaseName())) names << file.completeBaseName();
    }
  }
  return names;
}

bool applySkin(const QString& name) {
  skin_detail::Skin skin;
  const bool found = skin_detail::read(name, skin);
  if (!found) skin = {QString::fromUtf16(usualSkin), skin_detail::usualColours(), {}};
  const bool known = found || name == QString::fromUtf16(usualSkin);
  skin_detail::apply(std::move(skin));
  return known;
}

QString currentSkin() {
  return skin_detail::current().name;
}

QColor skinColour(const QString& name) {
  return skin_detail::current().colours.value(name);
}

void setLook(QWidget& widget, const char* look, bool on) {
  if (widget.property(look).toBool() == on) return;
  widget.setProperty(look, on);
  widget.style()->unpolish(&widget);
  widget.style()->polish(&widget);
}

QColor rowColour(RowLook look) {
  switch (look) {
    case RowLook::Normal:
      return skinColour(QStringLiteral("text"));
    case RowLook::Muted:
      return skinColour(QStringLiteral("muted"));
    case RowLook::Good:
      return skinColour(QStringLiteral("good"));
    case RowLook::Warning:
      return skinColour(QStringLiteral("warning"));
    case RowLook::Bad:
      return skinColour(QStringLiteral("bad"));
  }
  return {};
}

QStringList fontFamilies() {
  return {QStringLiteral("Microsoft YaHei"), QStringLiteral("WenQuanYi Micro Hei"), QStringLiteral("Noto Sans CJK SC")};
}

}  // namespace jxc::ui

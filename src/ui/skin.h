// 皮肤: look and feel: a palette and a style sheet in skinfiles/<name>.skinres.
#pragma once

#include "ui/grid_model.h"

#include <QColor>
#include <QString>
#include <QStringList>

class QWidget;

namespace jxc::ui {

/// Names of the skins of the program directory, the usual one first.
QStringList skinNames();
/// Applies a skin to the whole program; an unknown or broken one gives the usual look. Returns whether it was found.
bool applySkin(const QString& name);
QString currentSkin();
/// The usual look.
inline constexpr const char16_t* usualSkin = u"iMaginary";

/// A named colour of the skin: "accent", "warning" …; an invalid colour for an unknown name.
QColor skinColour(const QString& name);
QColor rowColour(RowLook look);
/// Turns a look of the style sheet ("warning") on or off for a widget that is seen already.
void setLook(QWidget& widget, const char* look, bool on);

/// Families in order, because left to fall-back some characters come in Japanese forms.
QStringList fontFamilies();

}  // namespace jxc::ui

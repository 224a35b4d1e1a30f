#include "ui/secret_edit.h"

#include "core/wiping.h"

#include <QHideEvent>

#include <algorithm>

namespace jxc::ui {
namespace secret_edit_detail {

constexpr QChar kStandIn(0xF8FF);  // of the private area: no keyboard has it

}  // namespace secret_edit_detail

SecretEdit::SecretEdit(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(kMost);
  setEchoMode(QLineEdit::Password);
  connect(this, &QLineEdit::textChanged, this, [this](const QString& shown) { takeIn(shown); });
}

SecretEdit::~SecretEdit() {
  wipe(typed_.data(), sizeof typed_);
}

void SecretEdit::hideEvent(QHideEvent* event) {
  if (!event->spontaneous()) clear();
  QLineEdit::hideEvent(event);
}

QString SecretEdit::secret() const {
  return QString(reinterpret_cast<const QChar*>(typed_.data()), length_);
}

/// One edit at a time: new characters stand in front of the cursor, and what they took the place of stood there.
void SecretEdit::takeIn(const QString& shown) {
  using namespace secret_edit_detail;
  if (isReplacing_) return;
  const int size = static_cast<int>(std::min<qsizetype>(shown.size(), kMost));
  const auto isNew = [](QChar c) { return c != kStandIn; };
  const int cursor = std::min(cursorPosition(), size);
  const int first = static_cast<int>(std::find_if(shown.begin(), shown.begin() + size, isNew) - shown.begin());
  const int from = std::min(first, cursor);
  const int behind = std::min(size - cursor, length_);
  const auto begin = typed_.begin();
  // What stands behind the edit keeps its characters; it moves to where it stands now.
  if (const int was = length_ - behind; was < cursor)
    std::copy_backward(begin + was, begin + length_, begin + cursor + behind);
  else
    std::copy(begin + was, begin + length_, begin + cursor);
  for (int i = from; i < cursor; ++i)
    if (isNew(shown[i])) typed_[static_cast<std::size_t>(i)] = shown[i].unicode();
  length_ = size;
  std::fill(begin + length_, typed_.end(), u'\0');
  if (std::none_of(shown.begin(), shown.end(), isNew)) return;

  isReplacing_ = true;
  {
    const WipedText shared{text()};  // the line's own buffer, wiped before it is let go
  }
  setText(QString(size, kStandIn));
  setCursorPosition(cursor);
  isReplacing_ = false;
}

}  // namespace jxc::ui

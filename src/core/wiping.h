// 擦除: what an operator typed as a password is overwritten when it has been used.
#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <utility>

namespace jxc {

/// Overwrites the text where it stands, also for whoever shares it, and empties it.
void wipe(QString& text);
void wipe(QByteArray& bytes);
void wipe(void* at, std::size_t bytes);

/// A text that is wiped when it goes, and with it every copy that shares it: nothing that outlives it may keep one.
class WipedText {
 public:
  explicit WipedText(QString text) : text_(std::move(text)) {}
  ~WipedText() { wipe(text_); }
  WipedText(const WipedText&) = delete;
  WipedText& operator=(const WipedText&) = delete;
  operator const QString&() const { return text_; }  // for the rules, which take texts

 private:
  QString text_;
};

}  // namespace jxc

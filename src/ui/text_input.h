// 多行输入: inputs of several lines.
#pragma once

#include <QMimeData>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace jxc::ui {

/// An input of several lines in which Ctrl+V over an empty clipboard does nothing: Qt 6.4 would read the first of no
/// formats, and the program would end.
template <class Edit>
class PastingSafely : public Edit {
 public:
  using Edit::Edit;

 protected:
  void insertFromMimeData(const QMimeData* source) override {
    if (source && !source->formats().isEmpty()) Edit::insertFromMimeData(source);
  }
};

using MemoInput = PastingSafely<QPlainTextEdit>;
using RichTextInput = PastingSafely<QTextEdit>;

}  // namespace jxc::ui

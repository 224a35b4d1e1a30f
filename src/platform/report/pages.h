// 页面: prepared pages: painted on anything, searched, written as PDF and PNG. Compact: some 40 bytes a piece.
#pragma once

#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class QImage;
class QPainter;

namespace jxc::report {

/// Something that the program draws on paper itself, inside the area and as fine as the device: a chart. Lengths are
/// hundredths of a millimetre, fonts have pixel sizes of the same. It is kept with the pages and called whenever they
/// are painted.
using Drawing = std::function<void(QPainter& painter, const QRectF& area)>;

/// An expression or object that could not be printed; the paper shows a mark in its place.
struct Fault {
  QString where;    // "明细行 / t3"
  QString content;  // the expression
  QString message;
  int count = 1;  // how often
};

/// A finished print. Copies share the pages, which never change.
class Pages {
 public:
  Pages();

  int count() const;
  bool isEmpty() const { return count() == 0; }
  QString title() const;
  /// What a file or a print job of these pages is called; the title where nothing else was given.
  QString name() const { return name_.isEmpty() ? title() : name_; }
  void setName(const QString& name) { name_ = name; }
  /// In millimetres, as the reader holds it.
  QSizeF size(int page) const;
  /// The paper is turned on its side to be printed; a form that is wider than high is not.
  bool isLandscape() const;

  /// Paints a page with its upper left corner at the painter's origin; `scale` is device units a millimetre.
  void paint(QPainter& painter, int page, double scale) const;
  QImage image(int page, double dpi) const;

  const std::vector<Fault>& faults() const;

  struct Hit {
    int page;
    QRectF area;  // millimetres
  };
  /// Every place of the text, without regard to case, in reading order.
  std::vector<Hit> find(const QString& text) const;
  /// The texts of a page from top to bottom, those of one height joined by a tab.
  QStringList lines(int page) const;

  /// Written beside and moved into place; throws std::runtime_error with a message for the operator, and then an older
  /// file is as before. Pages count from 1; `to` 0 is the last.
  void writePdf(const QString& path, int from = 1, int to = 0) const;
  /// One file a page: "<name>.png", from the second page on "<name>-2.png". The files written.
  QStringList writePng(const QString& path, double dpi = 150) const;

  /// Bytes held.
  std::size_t memory() const;

  struct Data;
  explicit Pages(std::shared_ptr<const Data> data) : data_(std::move(data)) {}

 private:
  std::shared_ptr<const Data> data_;
  QString name_;
};

}  // namespace jxc::report

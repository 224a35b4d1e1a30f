// 栏: one band with its values filled in, ready to be put on a page.
#pragma once

#include "platform/report/barcode.h"
#include "platform/report/content.h"
#include "platform/report/expression.h"
#include "platform/report/page_data.h"
#include "platform/report/typeface.h"

#include <QHash>
#include <QString>

#include <map>
#include <optional>
#include <vector>

namespace jxc::report {

struct CompiledItem {
  const Item* item = nullptr;
  QString where;  // "明细行 / 单价"
  Content content;
  std::optional<Node> visible;
  int face = 0;
  std::uint16_t pen = 0;
  QString lastText;  // of the row before on this page, for hideRepeated
};

struct CompiledBand {
  const Band* band = nullptr;
  QString where;
  std::vector<CompiledItem> items;
  std::vector<std::size_t> byHeight;  // items from top to bottom
  std::optional<Node> visible;
  bool usesPage = false, usesPages = false;
  bool remembers = false;  // some item is left out when it repeats
};

/// Pieces measured from the band's upper left corner, texts of its own.
struct Block {
  const CompiledBand* band = nullptr;
  bool isVisible = true;
  double height = 0;
  std::vector<Piece> pieces;
  QString texts;
};

/// Makes blocks of bands.
class BandMaker {
 public:
  struct Options {
    bool preprinted = false;
    bool growing = true;  // bands of a fixed place do not grow
    QString pictureFolder;
    const std::map<QString, Drawing>* drawings = nullptr;
  };
  BandMaker(Program& program, Pages::Data& data, Options options);

  void setGrowing(bool growing) { options_.growing = growing; }
  CompiledBand compile(const Band& band);
  /// `blank`: frames and lines without texts. Background objects only, or all but these, when `background` says so.
  void make(CompiledBand& band, const Place& place, double width, bool blank, Block& block,
            std::optional<bool> background = {});
  /// A new page or column: everything is printed again.
  static void forget(CompiledBand& band);

  const Typefaces& faces() const { return faces_; }

 private:
  struct Laid {
    CompiledItem* compiled = nullptr;
    QString text;
    std::vector<Typeface::Line> lines;
    int face = 0;
    double x = 0, y = 0, width = 0, height = 0, delta = 0, shift = 0;
    bool isFault = false, isNumber = false;
  };

  std::optional<Node> condition(const QString& expression, const QString& where, bool& usesPage, bool& usesPages);
  bool isShown(const std::optional<Node>& condition, const QString& expression, const QString& where,
               const Place& place);
  void fillIn(Laid& laid, const Place& place);
  void settle(Laid& laid);  // face, lines and growth
  double grow(CompiledBand& band);
  void put(const Laid& laid, Block& block);
  void putText(const Laid& laid, Block& block);
  void putBarcode(const Laid& laid, Block& block);
  void putPicture(const Laid& laid, Block& block);
  void putMark(const Laid& laid, const QString& message, Block& block);
  void putLine(const Laid& laid, QStringView text, double u, double v, double width, int face, bool spread,
               Block& block);
  int sized(const CompiledItem& item, double size, bool isFault);
  std::uint16_t penIndex(const Pen& pen);
  int pictureIndex(const QString& content, QString& fault);
  void note(const QString& where, const QString& content, const QString& message);

  struct Bars {
    std::uint32_t first = 0, size = 0;
    QString shown, fault;
  };
  const Bars& bars(const QString& text, const Item& item);

  Program& program_;
  Pages::Data& data_;
  Options options_;
  Typefaces faces_;
  std::vector<Laid> laid_;  // of the band at hand
  QHash<QString, Bars> bars_;
  QHash<QString, int> pictures_;
};

}  // namespace jxc::report

// 报表模板: the model of a report template: page, bands, objects, variables; plain values that code builds and a
// designer edits. All lengths are millimetres, sizes of type are points.
#pragma once

#include <QColor>
#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace jxc::report {

/// How the rows fill the columns of a page of labels: down one column first, or across a line first.
enum class Flow : std::uint8_t { Down, Across };

struct PageSetup {
  /// The paper upright; `landscape` turns it. Of a roll the height is the longest piece that is printed in one go.
  double width = 210, height = 297;
  bool landscape = false;
  double left = 10, top = 10, right = 10, bottom = 10;
  /// Continuous paper: the page is as long as what stands on it.
  bool roll = false;
  /// The form is printed already: objects marked `background` are left out.
  bool preprinted = false;
  int columns = 1;
  double columnGap = 0;
  Flow flow = Flow::Down;

  /// As the reader holds it.
  double pageWidth() const { return landscape ? height : width; }
  double pageHeight() const { return landscape ? width : height; }
  double bodyWidth() const { return pageWidth() - left - right; }
  /// What a band inside the columns may take.
  double columnWidth() const { return columns > 1 ? (bodyWidth() - (columns - 1) * columnGap) / columns : bodyWidth(); }
  bool operator==(const PageSetup&) const = default;
};

/// A paper that the designer offers by name.
struct Paper {
  const char16_t* name;
  double width, height;
  bool roll;
};
/// A3 to A6, 241 mm continuous forms (whole, half, third), rolls of 58 and 80 mm.
std::span<const Paper> papers();
/// The paper of that size, or null: a size of its own.
const Paper* findPaper(const PageSetup& page);
/// Takes size and kind from the paper, and margins that suit it.
void usePaper(PageSetup& page, const Paper& paper);

enum class ItemKind : std::uint8_t { Text, Line, Shape, Picture, Barcode };
enum class HAlign : std::uint8_t { Left, Center, Right, Spread };  // Spread: the characters across the whole width
enum class VAlign : std::uint8_t { Top, Center, Bottom };
enum class PenStyle : std::uint8_t { Solid, Dash, Dot, Double };
enum class ShapeKind : std::uint8_t { Rectangle, RoundedRectangle, Ellipse, Triangle, Diamond };
enum class PictureFit : std::uint8_t { Inside, Stretch, Original };

/// Sides of a frame, to be joined.
namespace side {
constexpr std::uint8_t none = 0, left = 1, top = 2, right = 4, bottom = 8, all = 15;
}

struct FontStyle {
  QString family;  // empty: the usual ones of this program
  double size = 9;
  bool bold = false, italic = false, underline = false, strikeOut = false;
  QColor colour = Qt::black;
  bool operator==(const FontStyle&) const = default;
};

struct Pen {
  double width = 0.2;
  PenStyle style = PenStyle::Solid;
  QColor colour = Qt::black;
  bool operator==(const Pen&) const = default;
};

/// The barcodes that are offered; the file names them as `symbologyName` does.
enum class Symbology : std::uint8_t {
  Code128,
  Code39,
  Code93,
  Codabar,
  Interleaved25,
  Itf14,
  Ean13,
  Ean8,
  UpcA,
  UpcE,
  Gs1Code128,
  Qr,
  DataMatrix,
  Pdf417,
  Aztec
};

/// One object of a band. Every kind uses place, name, visibility and pen; the rest as it says.
struct Item {
  ItemKind kind = ItemKind::Text;
  QString name;                                // how the designer and the list of faults call it
  double x = 0, y = 0, width = 0, height = 0;  // inside its band; a line runs from the corner to the opposite one

  /// Text, Barcode: words with expressions in square brackets, "客户：[khName]". Picture: the same, giving a file name
  /// (below the picture folder unless it is a whole path), a "data:image/png;base64,…" or a "drawing:NAME" of the
  /// program (`Report::setDrawing`).
  QString content;
  QString visibleIf;          // an expression; empty: always
  bool background = false;    // belongs to the form: left out on preprinted paper
  bool followHeight = false;  // when the band grows, the object reaches as far down as before (frames of a row)

  // Text
  FontStyle font;
  HAlign align = HAlign::Left;
  VAlign valign = VAlign::Center;
  bool wrap = false;    // lines are broken at the right edge
  bool shrink = false;  // type gets smaller until the text fits
  bool grow = false;    // the object, and its band, get higher until the text fits; implies wrap
  double lineSpacing = 1.0;
  double paddingX = 0.8, paddingY = 0;
  int rotation = 0;           // 0, 90, 180, 270 degrees clockwise; also Barcode and Picture
  QString format;             // of numbers "#,##0.00" and dates "yyyy年mm月dd日" in brackets
  bool hideZero = false;      // a zero prints as nothing
  bool hideRepeated = false;  // nothing when the row before, on the same page, had the same

  // Text, Shape, Line: frame and lines; fill invalid: none
  std::uint8_t frame = side::none;
  Pen pen;
  QColor fill;

  ShapeKind shape = ShapeKind::Rectangle;
  bool rising = false;  // Line: from the lower left to the upper right

  PictureFit fit = PictureFit::Inside;

  Symbology symbology = Symbology::Code128;
  bool showCode = true;  // the digits below the bars
  int correction = 1;    // Qr: 1 (7 %) to 4 (30 %)

  bool operator==(const Item&) const = default;
};

enum class BandKind : std::uint8_t {
  ReportTitle,   // once, at the very start
  PageHeader,    // every page
  ColumnHeader,  // above the rows, on every page and in every column
  GroupHeader,
  MasterData,  // every row of the detail query
  GroupFooter,
  Summary,     // once, behind the last row
  PageFooter,  // every page, at its foot; of a roll behind all else
  Overlay      // over the whole page, measured from its margins
};

struct Band {
  BandKind kind = BandKind::MasterData;
  double height = 6;
  int group = 0;  // of GroupHeader and GroupFooter: index into Template::groups
  QString visibleIf;
  bool newPage = false;        // starts on a new page (never the first thing on one)
  bool splits = false;         // may be cut at the foot of a page, between its lines of text
  bool atBottom = false;       // Summary: right above the page footer
  bool onFirstPage = true;     // PageHeader, PageFooter, Overlay
  bool onLastPage = true;      // the same
  QColor fill, alternateFill;  // the second for every other row
  std::vector<Item> items;

  bool operator==(const Band&) const = default;
};

/// Rows with the same value, one after another. The first group is the outermost.
struct Group {
  QString by;                 // an expression over the row
  bool newPage = false;       // every one but the first starts on a new page
  bool keepTogether = false;  // not broken unless it is longer than a page
  bool repeatHeader = true;   // its header again on the next page
  bool operator==(const Group&) const = default;
};

/// A name that the program sets before it prints. What it does not set is `value`, and empty when that is empty too.
struct Variable {
  QString name;
  QString label;   // what the designer shows: "客户名称"
  QString value;   // an expression: text in quotes
  QString sample;  // an expression for the designer's preview
  bool operator==(const Variable&) const = default;
};

/// A field of the detail query, for the designer.
struct DetailField {
  QString name;
  QString label;
  QString sample;  // a plain value, not an expression
  bool operator==(const DetailField&) const = default;
};

struct Template {
  QString title;  // "销售单"
  QString kind;   // which paper of the program it is a design of: "spxs2"; empty: the one that its file is named after
  PageSetup page;
  std::vector<Variable> variables;
  std::vector<DetailField> fields;
  std::vector<Group> groups;
  std::vector<Band> bands;  // several of one kind print one below the other

  bool operator==(const Template&) const = default;
};

// Building in code.
Item textItem(double x, double y, double width, double height, QString content, HAlign align = HAlign::Left);
Item lineItem(double x, double y, double width, double height, double penWidth = 0.2);
Item shapeItem(double x, double y, double width, double height, ShapeKind shape = ShapeKind::Rectangle);
Item pictureItem(double x, double y, double width, double height, QString content);
Item barcodeItem(double x, double y, double width, double height, QString content, Symbology symbology);
Band& addBand(Template& t, BandKind kind, double height);

// The words of the file and of the designer.
QStringView bandKindName(BandKind kind);          // "master-data"
QStringView bandKindLabel(BandKind kind);         // "明细行"
QStringView itemKindName(ItemKind kind);          // "text"
QStringView itemKindLabel(ItemKind kind);         // "文本"
QStringView symbologyName(Symbology symbology);   // "code128"
QStringView symbologyLabel(Symbology symbology);  // "Code 128"
std::span<const Symbology> symbologies();
std::optional<BandKind> bandKindNamed(QStringView name);
std::optional<ItemKind> itemKindNamed(QStringView name);
std::optional<Symbology> symbologyNamed(QStringView name);

}  // namespace jxc::report

#include "platform/report/template.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace jxc::report {

namespace template_detail {

constexpr Paper kPapers[] = {
    {u"A4", 210, 297, false},
    {u"A5", 148, 210, false},
    {u"A6", 105, 148, false},
    {u"A3", 297, 420, false},
    {u"连续纸 241 整张", 241, 279.4, false},
    {u"连续纸 241 二等分", 241, 139.7, false},
    {u"连续纸 241 三等分", 241, 93.1, false},
    {u"卷纸 80", 80, 3000, true},
    {u"卷纸 58", 58, 3000, true},
};

template <class E>
struct Word {
  E value;
  QStringView name, label;
};

constexpr Word<BandKind> kBands[] = {
    {BandKind::ReportTitle, u"report-title", u"报表标题"},
    {BandKind::PageHeader, u"page-header", u"页眉"},
    {BandKind::ColumnHeader, u"column-header", u"列标题"},
    {BandKind::GroupHeader, u"group-header", u"分组头"},
    {BandKind::MasterData, u"master-data", u"明细行"},
    {BandKind::GroupFooter, u"group-footer", u"分组尾"},
    {BandKind::Summary, u"summary", u"汇总"},
    {BandKind::PageFooter, u"page-footer", u"页脚"},
    {BandKind::Overlay, u"overlay", u"整页"},
};

constexpr Word<ItemKind> kItems[] = {
    {ItemKind::Text, u"text", u"文本"},       {ItemKind::Line, u"line", u"线条"},
    {ItemKind::Shape, u"shape", u"图形"},     {ItemKind::Picture, u"picture", u"图片"},
    {ItemKind::Barcode, u"barcode", u"条码"},
};

constexpr Word<Symbology> kSymbologies[] = {
    {Symbology::Code128, u"code128", u"Code 128"},
    {Symbology::Code39, u"code39", u"Code 39"},
    {Symbology::Code93, u"code93", u"Code 93"},
    {Symbology::Codabar, u"codabar", u"Codabar"},
    {Symbology::Interleaved25, u"interleaved25", u"交叉25码"},
    {Symbology::Itf14, u"itf14", u"ITF-14"},
    {Symbology::Ean13, u"ean13", u"EAN-13"},
    {Symbology::Ean8, u"ean8", u"EAN-8"},
    {Symbology::UpcA, u"upca", u"UPC-A"},
    {Symbology::UpcE, u"upce", u"UPC-E"},
    {Symbology::Gs1Code128, u"gs1-128", u"GS1-128"},
    {Symbology::Qr, u"qr", u"二维码 QR"},
    {Symbology::DataMatrix, u"datamatrix", u"Data Matrix"},
    {Symbology::Pdf417, u"pdf417", u"PDF417"},
    {Symbology::Aztec, u"aztec", u"Aztec"},
};

template <class E, std::size_t n>
const Word<E>& wordOf(const Word<E> (&words)[n], E value) {
  return *std::find_if(std::begin(words), std::end(words) - 1, [&](const auto& w) { return w.value == value; });
}

template <class E, std::size_t n>
std::optional<E> valueOf(const Word<E> (&words)[n], QStringView name) {
  for (const auto& word : words) {
    if (word.name == name) return word.value;
  }
  return {};
}

Item placed(ItemKind kind, double x, double y, double width, double height) {
  Item item;
  item.kind = kind;
  item.x = x;
  item.y = y;
  item.width = width;
  item.height = height;
  return item;
}

}  // namespace template_detail

std::span<const Paper> papers() {
  return template_detail::kPapers;
}

const Paper* findPaper(const PageSetup& page) {
  for (const Paper& paper : template_detail::kPapers) {
    if (paper.roll == page.roll && std::abs(paper.width - page.width) < 0.5 &&
        (paper.roll || std::abs(paper.height - page.height) < 0.5)) {
      return &paper;
    }
  }
  return nullptr;
}

void usePaper(PageSetup& page, const Paper& paper) {
  page.width = paper.width;
  page.height = paper.height;
  page.roll = paper.roll;
  page.landscape = false;
  // Rolls have nothing to spare at their sides; the holes of continuous forms take 13 mm on each side.
  const double sides = paper.roll ? 3 : paper.width == 241 ? 15 : 10;
  page.left = page.right = sides;
  page.top = page.bottom = paper.roll ? 3 : paper.width == 241 ? 6 : 10;
}

Item textItem(double x, double y, double width, double height, QString content, HAlign align) {
  Item item = template_detail::placed(ItemKind::Text, x, y, width, height);
  item.content = std::move(content);
  item.align = align;
  return item;
}

Item lineItem(double x, double y, double width, double height, double penWidth) {
  Item item = template_detail::placed(ItemKind::Line, x, y, width, height);
  item.pen.width = penWidth;
  return item;
}

Item shapeItem(double x, double y, double width, double height, ShapeKind shape) {
  Item item = template_detail::placed(ItemKind::Shape, x, y, width, height);
  item.shape = shape;
  return item;
}

Item pictureItem(double x, double y, double width, double height, QString content) {
  Item item = template_detail::placed(ItemKind::Picture, x, y, width, height);
  item.content = std::move(content);
  return item;
}

Item barcodeItem(double x, double y, double width, double height, QString content, Symbology symbology) {
  Item item = template_detail::placed(ItemKind::Barcode, x, y, width, height);
  item.content = std::move(content);
  item.symbology = symbology;
  return item;
}

Band& addBand(Template& t, BandKind kind, double height) {
  Band& band = t.bands.emplace_back();
  band.kind = kind;
  band.height = height;
  return band;
}

QStringView bandKindName(BandKind kind) {
  return template_detail::wordOf(template_detail::kBands, kind).name;
}
QStringView bandKindLabel(BandKind kind) {
  return template_detail::wordOf(template_detail::kBands, kind).label;
}
QStringView itemKindName(ItemKind kind) {
  return template_detail::wordOf(template_detail::kItems, kind).name;
}
QStringView itemKindLabel(ItemKind kind) {
  return template_detail::wordOf(template_detail::kItems, kind).label;
}
QStringView symbologyName(Symbology symbology) {
  return template_detail::wordOf(template_detail::kSymbologies, symbology).name;
}
QStringView symbologyLabel(Symbology symbology) {
  return template_detail::wordOf(template_detail::kSymbologies, symbology).label;
}

std::span<const Symbology> symbologies() {
  static const auto all = [] {
    std::array<Symbology, std::size(template_detail::kSymbologies)> values{};
    std::transform(std::begin(template_detail::kSymbologies), std::end(template_detail::kSymbologies), values.begin(),
                   [](const auto& word) { return word.value; });
    return values;
  }();
  return all;
}

std::optional<BandKind> bandKindNamed(QStringView name) {
  return template_detail::valueOf(template_detail::kBands, name);
}
std::optional<ItemKind> itemKindNamed(QStringView name) {
  return template_detail::valueOf(template_detail::kItems, name);
}
std::optional<Symbology> symbologyNamed(QStringView name) {
  return template_detail::valueOf(template_detail::kSymbologies, name);
}

}  // namespace jxc::report

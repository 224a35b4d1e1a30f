// .xls files: the records of a workbook (BIFF8), one after another in one stream, which goes into an OLE2 container.
#include "platform/sheet/ole_file.h"
#include "platform/sheet/sheet_cells.h"

#include <QFile>
#include <QHash>

#include <bit>
#include <cerrno>
#include <cstdint>
#include <string>
#include <vector>

namespace jxc::xls_workbook_detail {

using sheet_cells::Style;

constexpr std::size_t kMostRecord = 8224;  // bytes of one record's data; what is longer goes on in a CONTINUE record
constexpr std::uint16_t kContinue = 0x003c;
constexpr std::uint16_t kFirstOwnFormat = 164;
constexpr std::uint16_t kTextFormat = 49;  // "@", known to every reader
constexpr int kStyleRecords = 16;          // 15 of styles that every file has, and the cell without a style

/// The data of one record in the making; all numbers stand with their low byte first.
class Bytes {
 public:
  Bytes& u8(unsigned value) {
    data_.push_back(static_cast<char>(value));
    return *this;
  }
  Bytes& u16(unsigned value) { return u8(value & 0xff).u8(value >> 8 & 0xff); }
  Bytes& u32(std::uint32_t value) { return u16(value & 0xffff).u16(value >> 16); }
  Bytes& f64(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return u32(static_cast<std::uint32_t>(bits)).u32(static_cast<std::uint32_t>(bits >> 32));
  }
  /// A short text: how many characters, the flag of two-byte characters, the characters.
  Bytes& text8(const QString& text) { return u8(static_cast<unsigned>(text.size())).characters(text); }
  Bytes& text16(const QString& text) { return u16(static_cast<unsigned>(text.size())).characters(text); }
  const std::string& data() const { return data_; }

 private:
  Bytes& characters(const QString& text) {
    u8(1);
    for (const QChar c : text)
      u16(c.unicode());
    return *this;
  }
  std::string data_;
};

void addRecord(std::string& stream, std::uint16_t type, const std::string& data = {}) {
  stream += Bytes().u16(type).u16(static_cast<unsigned>(data.size())).data();
  stream += data;
}

/// The texts of all sheets, each once, in a record that is cut at 8,224 bytes. A cut may fall inside a text, but not
/// inside the head of one nor between the bytes of one character; after it the flag of the characters comes again.
class TextTable {
 public:
  std::uint32_t indexOf(const QString& text) {
    ++cells_;
    const auto found = places_.constFind(text);
    if (found != places_.constEnd()) return *found;
    const auto place = static_cast<std::uint32_t>(texts_.size());
    places_.insert(text, place);
    texts_.push_back(text);
    return place;
  }

  void write(std::string& stream) const {
    std::string data = Bytes().u32(cells_).u32(static_cast<std::uint32_t>(texts_.size())).data();
    std::uint16_t type = 0x00fc;
    const auto cut = [&] {
      addRecord(stream, type, data);
      type = kContinue;
      data.clear();
    };
    for (const QString& text : texts_) {
      const bool narrow = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x100; });
      const std::size_t size = narrow ? 1 : 2;
      if (data.size() + 3 + size > kMostRecord) cut();
      data += Bytes().u16(static_cast<unsigned>(text.size())).u8(narrow ? 0 : 1).data();
      for (const QChar c : text) {
        if (data.size() + size > kMostRecord) {
          cut();
          data.push_back(narrow ? 0 : 1);
        }
        data.push_back(static_cast<char>(c.unicode() & 0xff));
        if (!narrow) data.push_back(static_cast<char>(c.unicode() >> 8));
      }
    }
    addRecord(stream, type, data);
  }

 private:
  QHash<QString, std::uint32_t> places_;
  std::vector<QString> texts_;
  std::uint32_t cells_ = 0;
};

class Xls : public sheet_cells::Workbook {
 public:
  explicit Xls(const QString& path) : path_(path) {}

  int style(const Style& style) override {
    const auto found = std::find(styles_.begin(), styles_.end(), style);
    if (found == styles_.end()) styles_.push_back(style);
    return static_cast<int>(std::find(styles_.begin(), styles_.end(), style) - styles_.begin()) + kStyleRecords;
  }

  void beginSheet(const QString& name, std::span<const double> widths) override {
    sheets_.push_back({name, {widths.begin(), widths.end()}, {}, 0});
  }

  void text(int row, int column, int style, const QString& text) override {
    cell(0x00fd, row, column, style, Bytes().u32(texts_.indexOf(text)).data());
  }

  void number(int row, int column, int style, double number) override {
    cell(0x0203, row, column, style, Bytes().f64(number).data());
  }

  void save() override {
    QFile file(path_);
    if (!file.open(QIODevice::WriteOnly)) throw sheet_cells::cannotWrite(path_, errno);
    const std::string bytes = oleFile("Workbook", stream());
    if (bytes.empty()) throw SheetError(QStringLiteral("表格太大，请改用 .xlsx 格式"));
    errno = 0;
    if (file.write(bytes.data(), static_cast<qint64>(bytes.size())) != static_cast<qint64>(bytes.size()) ||
        !file.flush()) {
      throw sheet_cells::cannotWrite(path_, errno);
    }
  }

 private:
  struct SheetPart {
    QString name;
    std::vector<double> widths;
    std::string cells;
    int rows;
  };

  void cell(std::uint16_t type, int row, int column, int style, const std::string& value) {
    SheetPart& sheet = sheets_.back();
    sheet.rows = std::max(sheet.rows, row + 1);
    addRecord(sheet.cells, type,
              Bytes().u16(static_cast<unsigned>(row))
                      .u16(static_cast<unsigned>(column))
                      .u16(static_cast<unsigned>(style))
                      .data() +
                  value);
  }

  static void addBegin(std::string& stream, unsigned what) {
    addRecord(stream, 0x0809, Bytes().u16(0x0600).u16(what).u16(0x0dbb).u16(0x07cc).u32(0x41).u32(6).data());
  }

  static void addFont(std::string& stream, bool bold) {
    addRecord(stream, 0x0031,
              Bytes()
                  .u16(220)  // eleven points
                  .u16(bold ? 1 : 0)
                  .u16(0x7fff)
                  .u16(bold ? 700 : 400)
                  .u16(0)
                  .u8(0)
                  .u8(0)
                  .u8(134)  // simplified Chinese
                  .u8(0)
                  .text8(QStringLiteral("宋体"))
                  .data());
  }

  void addLooks(std::string& stream) const {
    for (const bool bold : {false, true, false, false})
      addFont(stream, bold);
    std::vector<std::string> formats;
    std::vector<unsigned> numbers;
    for (const Style& style : styles_) {
      if (style.format.empty() || style.format == "@") {
        numbers.push_back(style.format.empty() ? 0 : kTextFormat);
        continue;
      }
      auto found = std::find(formats.begin(), formats.end(), style.format);
      const auto number = static_cast<unsigned>(found - formats.begin()) + kFirstOwnFormat;
      if (found == formats.end()) {
        formats.push_back(style.format);
        addRecord(stream, 0x041e, Bytes().u16(number).text16(QString::fromStdString(style.format)).data());
      }
      numbers.push_back(number);
    }
    for (int i = 0; i < kStyleRecords; ++i)
      addLook(stream, 0, 0, {}, i + 1 < kStyleRecords);
    for (std::size_t i = 0; i < styles_.size(); ++i)
      addLook(stream, styles_[i].bold ? 1 : 0, numbers[i], styles_[i], false);
    addRecord(stream, 0x0293, Bytes().u16(0x8000).u8(0).u8(0xff).data());
  }

  static void addLook(std::string& stream, unsigned font, unsigned format, const Style& style, bool isStyle) {
    constexpr unsigned kSolid = 1U << 26, kGrey = 22, kAutomatic = 0x41;
    addRecord(stream, 0x00e0,
              Bytes()
                  .u16(font)
                  .u16(format)
                  .u16(isStyle ? 0xfff5 : 0x0001)
                  .u8((style.right ? 3U : 0U) | 2U << 4)
                  .u8(0)
                  .u8(0)
                  .u8(isStyle ? 0xf4 : 0xfc)
                  .u32(0)
                  .u32(style.header ? kSolid : 0)
                  .u16((style.header ? kGrey : 0x40U) | kAutomatic << 7)
                  .data());
  }

  std::string stream() const {
    std::string all;
    addBegin(all, 0x0005);
    addRecord(all, 0x0042, Bytes().u16(0x04b0).data());  // characters of two bytes
    addRecord(all, 0x003d,
              Bytes().u16(0).u16(0).u16(0x5000).u16(0x3000).u16(0x38).u16(0).u16(0).u16(1).u16(600).data());
    addRecord(all, 0x0022, Bytes().u16(0).data());  // days count from 1900
    addLooks(all);
    std::vector<std::size_t> places;  // of the addresses of the sheets
    for (const SheetPart& sheet : sheets_) {
      places.push_back(all.size() + 4);
      addRecord(all, 0x0085, Bytes().u32(0).u16(0).text8(sheet.name).data());
    }
    texts_.write(all);
    addRecord(all, 0x000a);
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
      all.replace(places[i], 4, Bytes().u32(static_cast<std::uint32_t>(all.size())).data());
      addSheet(all, sheets_[i], i == 0);
    }
    return all;
  }

  static void addSheet(std::string& all, const SheetPart& sheet, bool first) {
    addBegin(all, 0x0010);
    const auto columns = static_cast<unsigned>(sheet.widths.size());
    for (unsigned i = 0; i < columns; ++i) {
      const auto width = static_cast<unsigned>(sheet.widths[i] * 256 + 0.5);
      addRecord(all, 0x007d, Bytes().u16(i).u16(i).u16(width).u16(kStyleRecords - 1).u16(0).u16(0).data());
    }
    addRecord(all, 0x0200,
              Bytes().u32(0).u32(static_cast<std::uint32_t>(sheet.rows)).u16(0).u16(columns).u16(0).data());
    all += sheet.cells;
    // The line of captions stays while the rows scroll.
    addRecord(all, 0x023e, Bytes().u16(first ? 0x07be : 0x01be).u16(0).u16(0).u32(0x40).u16(0).u16(0).u32(0).data());
    addRecord(all, 0x0041, Bytes().u16(0).u16(1).u16(1).u16(0).u16(2).data());
    addRecord(all, 0x001d, Bytes().u8(2).u16(1).u16(0).u16(0).u16(1).u16(1).u16(1).u8(0).u8(0).data());
    addRecord(all, 0x000a);
  }

  QString path_;
  std::vector<Style> styles_;
  std::vector<SheetPart> sheets_;
  TextTable texts_;
};

}  // namespace jxc::xls_workbook_detail

namespace jxc::sheet_cells {

std::unique_ptr<Workbook> makeXls(const QString& path) {
  return std::make_unique<xls_workbook_detail::Xls>(path);
}

}  // namespace jxc::sheet_cells

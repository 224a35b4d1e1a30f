// Any bytes as a spreadsheet file: refused with words for the operator, or read to its end. Bytes that begin with "<"
// are taken as the sheet of an .xlsx file, so that its XML is reached without guessing a packed archive.
#include "platform/sheet/sheet_reader.h"

#include <QFile>

#include <cstdint>
#include <unistd.h>
#include <zlib.h>

namespace {

void put(QByteArray& out, quint32 value, int bytes) {
  for (int i = 0; i < bytes; ++i)
    out.append(static_cast<char>(value >> (8 * i)));
}

/// An archive of parts that are stored as they are.
class Archive {
 public:
  void add(const QByteArray& name, const QByteArray& content) {
    const auto crc = static_cast<quint32>(
        crc32(0, reinterpret_cast<const Bytef*>(content.constData()), static_cast<uInt>(content.size())));
    const auto header = [&](QByteArray& out, bool central) {
      out += central ? QByteArray("PK\1\2", 4) : QByteArray("PK\3\4", 4);
      if (central) put(out, 20, 2);
      put(out, 20, 2), put(out, 0, 2), put(out, 0, 2), put(out, 0, 4), put(out, crc, 4);
      put(out, static_cast<quint32>(content.size()), 4), put(out, static_cast<quint32>(content.size()), 4);
      put(out, static_cast<quint32>(name.size()), 2), put(out, 0, 2);
    };
    header(directory_, true);
    put(directory_, 0, 2), put(directory_, 0, 2), put(directory_, 0, 2), put(directory_, 0, 4);
    put(directory_, static_cast<quint32>(bytes_.size()), 4);
    directory_ += name;
    header(bytes_, false);
    bytes_ += name + content;
    ++parts_;
  }
  QByteArray bytes() const {
    QByteArray all = bytes_ + directory_ + QByteArray("PK\5\6", 4);
    put(all, 0, 4), put(all, parts_, 2), put(all, parts_, 2);
    put(all, static_cast<quint32>(directory_.size()), 4), put(all, static_cast<quint32>(bytes_.size()), 4);
    put(all, 0, 2);
    return all;
  }

 private:
  QByteArray bytes_, directory_;
  quint32 parts_ = 0;
};

QByteArray workbookAround(const QByteArray& sheet) {
  const QByteArray head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
  const QByteArray office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
  const QByteArray main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
  Archive archive;
  archive.add("[Content_Types].xml",
              head + "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"/>");
  archive.add("_rels/.rels", head +
                                 "<Relationships "
                                 "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
                                 "Id=\"rId1\" Type=\"" +
                                 office + "/officeDocument\" Target=\"xl/workbook.xml\"/></Relationships>");
  archive.add("xl/workbook.xml", head + "<workbook xmlns=\"" + main + "\" xmlns:r=\"" + office +
                                     "\"><sheets><sheet name=\"a\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>");
  archive.add("xl/_rels/workbook.xml.rels",
              head +
                  "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
                  "Id=\"rId1\" Type=\"" +
                  office + "/worksheet\" Target=\"worksheets/sheet1.xml\"/></Relationships>");
  archive.add("xl/worksheets/sheet1.xml", sheet);
  return archive.bytes();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const QString path = QStringLiteral("/dev/shm/jxc-fuzz-%1").arg(getpid());
  QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  if (bytes.startsWith('<')) bytes = workbookAround(bytes);
  {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return 0;
    file.write(bytes);
  }
  try {
    const auto opened = jxc::openExcel(path);
    for (int sheet = 0; sheet < opened->sheetNames().size(); ++sheet)
      opened->rows(sheet);
  } catch (const jxc::SheetError&) {
  }
  QFile::remove(path);
  return 0;
}

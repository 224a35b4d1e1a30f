// Files that the tests of spreadsheets make: packages and containers with what a test wants in them.
#pragma once

#include "harness/files.h"
#include "platform/sheet/sheet_reader.h"
#include "platform/sheet/sheet_writer.h"

#include <minizip/zip.h>
#include <string>
#include <utility>
#include <vector>

namespace jxc::test {

/// The check sum that a package with a password wants beforehand.
inline unsigned long checkSum(const QByteArray& bytes) {
  unsigned long sum = 0xffffffff;
  for (const char byte : bytes) {
    sum ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit)
      sum = sum >> 1 ^ (sum & 1 ? 0xedb88320 : 0);
  }
  return sum ^ 0xffffffff;
}

using ZipParts = std::vector<std::pair<std::string, QByteArray>>;

inline void writeZip(const QString& path, const ZipParts& parts, const char* password = nullptr) {
  zipFile zip = zipOpen64(QFile::encodeName(path).constData(), APPEND_STATUS_CREATE);
  ASSERT_NE(zip, nullptr);
  for (const auto& [name, content] : parts) {
    const unsigned long crc = password ? checkSum(content) : 0;
    ASSERT_EQ(zipOpenNewFileInZip3_64(zip, name.c_str(), nullptr, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED, 6, 0,
                                      -MAX_WBITS, DEF_MEM_LEVEL, Z_DEFAULT_STRATEGY, password, crc, 1),
              ZIP_OK);
    ASSERT_EQ(zipWriteInFileInZip(zip, content.constData(), static_cast<unsigned>(content.size())), ZIP_OK);
    ASSERT_EQ(zipCloseFileInZip(zip), ZIP_OK);
  }
  ASSERT_EQ(zipClose(zip, nullptr), ZIP_OK);
}

/// The parts of a small .xlsx around the XML of its one sheet, as other programs write it.
inline ZipParts xlsxParts(const QByteArray& sheetXml, const QByteArray& textsXml = "<sst/>") {
  const QByteArray relations = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
  return {
      {"[Content_Types].xml", "<Types/>"},
      {"_rels/.rels", "<Relationships><Relationship Id=\"r1\" Type=\"" + relations +
                          "/officeDocument\" Target=\"xl/workbook.xml\"/>" + "</Relationships>"},
      {"xl/workbook.xml", "<workbook xmlns:r=\"" + relations +
                              "\"><sheets><sheet name=\"商品\" sheetId=\"1\" r:id=\"r1\"/></sheets></workbook>"},
      {"xl/_rels/workbook.xml.rels",
       "<Relationships><Relationship Id=\"r1\" Type=\"" + relations +
           "/worksheet\" Target=\"worksheets/sheet1.xml\"/>" + "<Relationship Id=\"r2\" Type=\"" + relations +
           "/styles\" Target=\"/xl/styles.xml\"/>" + "<Relationship Id=\"r3\" Type=\"" + relations +
           "/sharedStrings\" Target=\"sharedStrings.xml\"/>" + "</Relationships>"},
      {"xl/styles.xml",
       "<styleSheet><numFmts><numFmt numFmtId=\"170\" formatCode=\"yyyy&quot;年&quot;m&quot;月&quot;d&quot;日&quot;\"/>"
       "<numFmt numFmtId=\"171\" formatCode=\"[红色]0.00&quot;d&quot;\"/></numFmts><cellXfs><xf numFmtId=\"0\"/>"
       "<xf numFmtId=\"14\"/><xf numFmtId=\"170\"/><xf numFmtId=\"171\"/><xf numFmtId=\"22\"/></cellXfs></styleSheet>"},
      {"xl/sharedStrings.xml", textsXml},
      {"xl/worksheets/sheet1.xml", sheetXml},
  };
}

}  // namespace jxc::test

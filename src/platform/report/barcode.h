// 条码: the bars and dots of a barcode, as a field of black and white.
#pragma once

#include "platform/report/template.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace jxc::report {

/// Modules row by row, a bit each, beginning with the lowest bit of the first byte. Bars have one row.
struct BarcodeField {
  int columns = 0, rows = 0;
  std::vector<std::uint8_t> bits;
  QString shown;  // the text below: with the check digit that was added
  bool isBlack(int column, int row) const {
    const int at = row * columns + column;
    return bits[static_cast<std::size_t>(at / 8)] >> (at % 8) & 1;
  }
};

/// Whether it is a field of dots, as wide as it is high.
bool isSquare(Symbology symbology);

/// Throws ExpressionError for what this kind of code cannot say.
BarcodeField encodeBarcode(const QString& text, Symbology symbology, int correction);

}  // namespace jxc::report

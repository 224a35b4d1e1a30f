#include "platform/report/barcode.h"

#include "platform/report/expression.h"

#include <algorithm>
#include <memory>
#include <zint.h>

namespace jxc::report {

namespace barcode_detail {

int kindOf(Symbology symbology) {
  switch (symbology) {
    case Symbology::Code128:
      return BARCODE_CODE128;
    case Symbology::Code39:
      return BARCODE_CODE39;
    case Symbology::Code93:
      return BARCODE_CODE93;
    case Symbology::Codabar:
      return BARCODE_CODABAR;
    case Symbology::Interleaved25:
      return BARCODE_C25INTER;
    case Symbology::Itf14:
      return BARCODE_ITF14;
    case Symbology::Ean13:
    case Symbology::Ean8:
      return BARCODE_EANX;
    case Symbology::UpcA:
      return BARCODE_UPCA;
    case Symbology::UpcE:
      return BARCODE_UPCE;
    case Symbology::Gs1Code128:
      return BARCODE_GS1_128;
    case Symbology::Qr:
      return BARCODE_QRCODE;
    case Symbology::DataMatrix:
      return BARCODE_DATAMATRIX;
    case Symbology::Pdf417:
      return BARCODE_PDF417;
    case Symbology::Aztec:
      return BARCODE_AZTEC;
  }
  return BARCODE_CODE128;
}

bool isDigits(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// The library takes short codes for this kind and fills them up; a shop's code that lost a digit must not scan.
void checkLength(const QString& text, Symbology symbology) {
  const auto check = [&](qsizetype without) {
    if (!isDigits(text) || (text.size() != without && text.size() != without + 1)) {
      throw ExpressionError{
          QStringLiteral("%1要%2或%3位数字").arg(symbologyLabel(symbology)).arg(without).arg(without + 1)};
    }
  };
  if (symbology == Symbology::Ean13) check(12);
  if (symbology == Symbology::Ean8) check(7);
  if (symbology == Symbology::UpcA) check(11);
  if (symbology == Symbology::Itf14) check(13);
  // Where two digits make a pair the library would put a zero before an odd number of them: another code.
  if (symbology == Symbology::Interleaved25 && (!isDigits(text) || text.size() % 2 != 0)) {
    throw ExpressionError{QStringLiteral("%1要双数位的数字").arg(symbologyLabel(symbology))};
  }
}

}  // namespace barcode_detail

bool isSquare(Symbology symbology) {
  return symbology == Symbology::Qr || symbology == Symbology::DataMatrix || symbology == Symbology::Aztec;
}

BarcodeField encodeBarcode(const QString& text, Symbology symbology, int correction) {
  barcode_detail::checkLength(text, symbology);
  const std::unique_ptr<zint_symbol, void (*)(zint_symbol*)> symbol(ZBarcode_Create(), ZBarcode_Delete);
  if (!symbol) throw ExpressionError{QStringLiteral("内存不足")};
  symbol->symbology = barcode_detail::kindOf(symbology);
  symbol->input_mode = symbology == Symbology::Gs1Code128 ? GS1_MODE : UNICODE_MODE;
  if (symbology == Symbology::Qr) symbol->option_1 = correction;
  const QByteArray utf8 = text.toUtf8();
  const int result = ZBarcode_Encode(symbol.get(), reinterpret_cast<const unsigned char*>(utf8.constData()),
                                     static_cast<int>(utf8.size()));
  // A warning still made a code.
  if (result >= ZINT_ERROR) {
    throw ExpressionError{QStringLiteral("“%1”不能印成%2").arg(text.left(30), symbologyLabel(symbology))};
  }
  BarcodeField field;
  field.columns = symbol->width;
  const bool bars = !isSquare(symbology) && symbology != Symbology::Pdf417;
  field.rows = bars ? 1 : symbol->rows;
  field.bits.resize(static_cast<std::size_t>(field.columns * field.rows + 7) / 8);
  for (int row = 0, at = 0; row < field.rows; ++row) {
    for (int column = 0; column < field.columns; ++column, ++at) {
      if (symbol->encoded_data[row][column / 8] >> (column % 8) & 1) {
        field.bits[static_cast<std::size_t>(at / 8)] |= static_cast<std::uint8_t>(1 << (at % 8));
      }
    }
  }
  if (bars) {
    const QString shown = QString::fromUtf8(reinterpret_cast<const char*>(symbol->text));
    field.shown = shown.isEmpty() ? text : shown;
  }
  return field;
}

}  // namespace jxc::report

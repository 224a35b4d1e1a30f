#include "platform/net/certificate.h"

#include <QCryptographicHash>

#include <optional>

namespace jxc::net {
namespace certificate_detail {

constexpr unsigned char kSequence = 0x30, kVersion = 0xa0;
constexpr int kBeforeTheKey = 5;  // serial number, algorithm, issuer, validity, subject

/// One value of the binary form: a tag, a length, what it holds.
struct Element {
  unsigned char tag = 0;
  QByteArrayView whole, inside;
};

/// The value that a text begins with.
std::optional<Element> firstOf(QByteArrayView bytes) {
  if (bytes.size() < 2) return {};
  const auto at = [&](qsizetype index) { return static_cast<unsigned char>(bytes[index]); };
  qsizetype header = 2, length = at(1);
  if (length & 0x80) {
    const qsizetype more = length & 0x7f;
    if (more < 1 || more > 3 || bytes.size() < 2 + more) return {};
    length = 0;
    for (qsizetype each = 0; each < more; ++each)
      length = length << 8 | at(2 + each);
    header += more;
  }
  if (bytes.size() < header + length) return {};
  return Element{at(0), bytes.first(header + length), bytes.sliced(header, length)};
}

/// The public key as it stands in a certificate: with its algorithm, which is how a pin is counted.
QByteArrayView publicKeyOf(QByteArrayView der) {
  const auto certificate = firstOf(der);
  const auto signedPart = certificate ? firstOf(certificate->inside) : std::nullopt;
  if (!signedPart || signedPart->tag != kSequence) return {};
  QByteArrayView rest = signedPart->inside;
  const auto version = firstOf(rest);
  if (version && version->tag == kVersion) rest = rest.sliced(version->whole.size());
  for (int passed = 0; passed < kBeforeTheKey; ++passed) {
    const auto each = firstOf(rest);
    if (!each) return {};
    rest = rest.sliced(each->whole.size());
  }
  const auto key = firstOf(rest);
  return key && key->tag == kSequence ? key->whole : QByteArrayView();
}

QByteArray sha256(QByteArrayView bytes) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  hash.addData(bytes);
  return hash.result();
}

}  // namespace certificate_detail

Certificate readCertificate(const QByteArray& pem) {
  using namespace certificate_detail;
  static const QByteArray kBegin = "-----BEGIN CERTIFICATE-----", kEnd = "-----END CERTIFICATE-----";
  const qsizetype from = pem.indexOf(kBegin), to = pem.indexOf(kEnd);
  if (from < 0 || to < from) return {};
  const QByteArray der = QByteArray::fromBase64(pem.mid(from + kBegin.size(), to - from - kBegin.size()));
  const QByteArrayView key = publicKeyOf(der);
  if (key.isEmpty()) return {};
  Certificate read;
  read.fingerprint = QString::fromLatin1(sha256(der).toHex(':').toUpper());
  read.pin = QString::fromLatin1(sha256(key).toBase64());
  return read;
}

}  // namespace jxc::net

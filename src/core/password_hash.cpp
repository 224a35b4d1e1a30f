#include "core/password_hash.h"

#include "core/wiping.h"

#include <array>
#include <sodium.h>
#include <stdexcept>

namespace jxc {
namespace password_hash_detail {

HashCost cost = HashCost::Usual;

void begin() {
  if (sodium_init() < 0) throw std::runtime_error("libsodium does not start");
}

QByteArray bytesOf(QStringView typed) {
  return passwordIn(typed).toUtf8();
}

}  // namespace password_hash_detail

void wipe(QString& text) {
  // Texts of the program itself have no buffer, and may not be written to.
  if (auto& data = text.data_ptr(); data.d_ptr() != nullptr)
    sodium_memzero(data.data(), static_cast<std::size_t>(data.size) * sizeof(QChar));
  text = QString();
}

void wipe(QByteArray& bytes) {
  if (auto& data = bytes.data_ptr(); data.d_ptr() != nullptr)
    sodium_memzero(data.data(), static_cast<std::size_t>(data.size));
  bytes = QByteArray();
}

void wipe(void* at, std::size_t bytes) {
  sodium_memzero(at, bytes);
}

QStringView passwordIn(QStringView typed) {
  return typed.trimmed();
}

QString passwordHash(QStringView typed) {
  using namespace password_hash_detail;
  if (passwordIn(typed).isEmpty()) return {};
  begin();
  QByteArray bytes = bytesOf(typed);
  const bool isUsual = cost == HashCost::Usual;
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  const int failed = crypto_pwhash_str_alg(
      hash.data(), bytes.constData(), static_cast<unsigned long long>(bytes.size()),
      isUsual ? crypto_pwhash_OPSLIMIT_INTERACTIVE : crypto_pwhash_OPSLIMIT_MIN,
      isUsual ? crypto_pwhash_MEMLIMIT_INTERACTIVE : crypto_pwhash_MEMLIMIT_MIN, crypto_pwhash_ALG_ARGON2ID13);
  wipe(bytes);
  if (failed != 0) throw std::runtime_error("内存不足，密码没有保存。");
  return QString::fromLatin1(hash.data());
}

void setHashCost(HashCost chosen) {
  password_hash_detail::cost = chosen;
}

bool isPasswordOf(const QString& hash, QStringView typed) {
  using namespace password_hash_detail;
  if (hash.isEmpty()) return passwordIn(typed).isEmpty();
  begin();
  QByteArray bytes = bytesOf(typed);
  const int differs = crypto_pwhash_str_verify(hash.toLatin1().constData(), bytes.constData(),
                                               static_cast<unsigned long long>(bytes.size()));
  wipe(bytes);
  return differs == 0;
}

}  // namespace jxc

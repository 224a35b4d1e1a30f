#include "stock/document_family.h"

#include <stdexcept>

namespace jxc {
namespace document_family_detail {

template <class Text>
const DocumentFamily* find(Text text) {
  if (text.size() < 2) return nullptr;
  for (const DocumentFamily& family : documentFamilies())
    if (char16_t(family.prefix[0]) == text[0] && char16_t(family.prefix[1]) == text[1]) return &family;
  return nullptr;
}

}  // namespace document_family_detail

const DocumentFamily* findFamily(QStringView prefixOrNumber) {
  return document_family_detail::find(prefixOrNumber);
}

const DocumentFamily* findFamily(std::string_view prefixOrNumber) {
  return document_family_detail::find(prefixOrNumber);
}

const DocumentFamily& documentFamily(QStringView prefixOrNumber) {
  if (const DocumentFamily* family = findFamily(prefixOrNumber)) return *family;
  throw std::out_of_range("no document family of " + prefixOrNumber.toString().toStdString());
}

}  // namespace jxc

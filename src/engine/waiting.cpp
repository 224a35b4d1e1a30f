#include "engine/waiting.h"

#include <utility>

namespace jxc {
namespace waiting_detail {

WaitListener& current() {
  static WaitListener listener;
  return listener;
}

}  // namespace waiting_detail

void setWaitListener(WaitListener listener) {
  waiting_detail::current() = std::move(listener);
}
const WaitListener& waitListener() {
  return waiting_detail::current();
}

}  // namespace jxc

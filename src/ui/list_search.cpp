#include "ui/list_search.h"

#include "core/session.h"
#include "core/text.h"

namespace jxc::ui {
ListSearch::ListSearch(Field& box, Grid& list, Query query) : box_(box), list_(list), query_(std::move(query)) {
  box_.onChanged([this] {
    if (!strIsTrue(session().cs_hcj)) search();
  });
  list_.followKeysOf(box_.widget());
}

void ListSearch::search() {
  searched_ = box_.trimmed();
  list_.loadQuery(query_(searched_));
}

void ListSearch::begin(const QString& typed) {
  box_.setText(typed);
  search();
}

bool ListSearch::enterSearches() {
  if (box_.trimmed() != searched_) {
    search();
    return true;
  }
  list_.waitLoaded();
  return false;
}

}  // namespace jxc::ui

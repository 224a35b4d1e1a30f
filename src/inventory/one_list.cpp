#include "inventory/one_list.h"

#include "engine/grouped_sums.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace jxc {
RowSet oneList(std::span<const ListOfKind> lists, std::span<const std::string_view> columns, bool newestFirst) {
  struct Place {
    QString inTime;  // a number is its kind, its day and a count
    const ListOfKind* list;
    int row;
  };
  std::vector<Place> places;
  for (const ListOfKind& list : lists)
    for (const Row row : list.rows) {
      const QString number = row.text("gl_djh");
      places.push_back({number.mid(2) + number, &list, row.index()});
    }
  std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) { return a.inTime < b.inTime; });

  std::vector<std::string_view> told;
  std::ranges::copy_if(columns, std::back_inserter(told), [&](std::string_view column) {
    return lists.empty() || lists.front().rows.columnIndex(column) >= 0;
  });
  std::vector<std::string> names{"id", "djlx"};
  names.insert(names.end(), told.begin(), told.end());
  RowSet all(names);
  for (std::size_t i = 0; i < places.size(); ++i) {
    const std::size_t at = newestFirst ? places.size() - 1 - i : i;
    const Place& place = places[at];
    all.addInteger(static_cast<std::int64_t>(at) + 1);
    all.addText(place.list->kind.toStdString());
    for (const std::string_view column : told)
      copyCell(all, place.list->rows, place.row, place.list->rows.columnIndex(column));
  }
  return all;
}

}  // namespace jxc

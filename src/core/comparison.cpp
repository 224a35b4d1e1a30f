#include "core/comparison.h"

#include "core/rounding.h"
#include "engine/grouped_sums.h"

#include <QDate>
#include <QHash>

#include <algorithm>
#include <cmath>
#include <utility>

namespace jxc {
namespace comparison_detail {

constexpr std::string_view kEarlier = "_earlier", kChange = "_change";
constexpr qsizetype kYear = 4, kMonth = 7, kDay = 10;  // letters of a time

QDate dateOf(const QString& time) {
  const QString first = time.size() == kYear    ? time + QStringLiteral("-01-01")
                        : time.size() == kMonth ? time + QStringLiteral("-01")
                                                : time.left(kDay);
  return QDate::fromString(first, Qt::ISODate);
}

QString textOf(const QDate& date, qsizetype letters) {
  return date.toString(Qt::ISODate).left(letters);
}

bool endsMonth(const QDate& date) {
  return date.day() == date.daysInMonth();
}

/// A row of the answer: of the later period, of the earlier one, or of both.
struct Place {
  QString key;
  int now = -1, before = -1;
  std::vector<double> earlier;
};

double numberIn(const RowSet& rows, int row, int column) {
  return column < 0 || rows.isNull(row, column) ? 0 : rows.number(row, column);
}

/// Both answers as one.
class Joined {
 public:
  Joined(RowSet now, RowSet before, const Comparison& comparison, std::optional<EarlierPeriod> period)
      : now_(std::move(now)), before_(std::move(before)), comparison_(comparison), period_(std::move(period)) {
    for (const std::string_view figure : comparison_.figures)
      figures_.emplace_back(now_.columnIndex(figure), before_.columnIndex(figure));
    place();
  }

  RowSet rows() const {
    std::vector<std::string> names = now_.columns();
    for (const std::string_view figure : comparison_.figures) {
      names.push_back(earlierField(figure));
      names.push_back(changeField(figure));
    }
    RowSet rows(names);
    for (const Place& place : places_) {
      for (int column = 0; column < now_.columnCount(); ++column)
        place.now >= 0 ? copyCell(rows, now_, place.now, column) : addOnlyBefore(rows, place, column);
      for (std::size_t i = 0; i < figures_.size(); ++i)
        addFigure(rows, place.now < 0 ? 0 : numberIn(now_, place.now, figures_[i].first), place.earlier[i]);
    }
    return rows;
  }

 private:
  void place() {
    QHash<QString, std::size_t> known;
    const auto find = [&](const QString& key) {
      const auto found = known.constFind(key);
      if (found != known.constEnd()) return *found;
      places_.push_back({.key = key, .earlier = std::vector<double>(figures_.size())});
      return *known.insert(key, places_.size() - 1);
    };
    for (const Row row : now_)
      places_[find(row.text(comparison_.key))].now = row.index();
    for (const Row row : before_) {
      const QString key = row.text(comparison_.key);
      Place& at = places_[find(comparison_.byTime ? period_->forward(key) : key)];
      at.before = row.index();
      for (std::size_t i = 0; i < figures_.size(); ++i)
        at.earlier[i] += numberIn(before_, row.index(), figures_[i].second);
    }
    if (!comparison_.byTime) return;
    // Times go up or down as the answer has them.
    const RowSet& told = now_.rowCount() > 1 ? now_ : before_;
    const int last = told.rowCount() - 1;
    const bool down = last > 0 && told[0].text(comparison_.key) > told[last].text(comparison_.key);
    std::ranges::stable_sort(places_,
                             [down](const Place& a, const Place& b) { return down ? a.key > b.key : a.key < b.key; });
  }

  /// What is text says what the row is; the numbers are those of the other period.
  void addOnlyBefore(RowSet& rows, const Place& place, int column) const {
    const bool isFigure = std::ranges::any_of(figures_, [column](const auto& each) { return each.first == column; });
    const int source = before_.columnIndex(now_.columns()[static_cast<std::size_t>(column)]);
    if (isFigure)
      rows.addInteger(0);
    else if (column == now_.columnIndex(comparison_.key))
      rows.addText(place.key.toStdString());
    else if (source >= 0 && before_.kind(place.before, source) == Value::Kind::Text)
      copyCell(rows, before_, place.before, source);
    else
      rows.addNull();
  }

  void addFigure(RowSet& rows, double now, double earlier) const {
    if (!period_) {
      rows.addNull();
      return rows.addNull();
    }
    constexpr int kHundredths = 2;
    rows.addReal(earlier);
    if (earlier == 0) return rows.addNull();
    rows.addReal(roundEps((now - earlier) * 100 / std::abs(earlier), kHundredths));
  }

  RowSet now_, before_;
  const Comparison& comparison_;
  std::optional<EarlierPeriod> period_;
  std::vector<std::pair<int, int>> figures_;  // their columns in both answers
  std::vector<Place> places_;
};

}  // namespace comparison_detail

QString EarlierPeriod::forward(const QString& time) const {
  const QDate date = comparison_detail::dateOf(time);
  if (!date.isValid()) return time;
  return comparison_detail::textOf(months != 0 ? date.addMonths(months) : date.addDays(days),
                                   time.size() > comparison_detail::kMonth ? comparison_detail::kDay : time.size());
}

std::optional<EarlierPeriod> earlierPeriod(CompareWith with, const Period& asked) {
  using namespace comparison_detail;
  constexpr int kMonths = 12;
  const bool isMonths = asked.from.size() == kMonth;
  const qsizetype letters = isMonths ? kMonth : kDay;
  const QDate from = dateOf(asked.from), last = dateOf(asked.to);
  if (with == CompareWith::Nothing || !from.isValid() || !last.isValid() || from > last) return {};
  if (from <= dateOf(allTime().from) && last >= dateOf(allTime().to)) return {};
  const QDate to = isMonths ? QDate(last.year(), last.month(), last.daysInMonth()) : last;
  EarlierPeriod earlier;
  if (with == CompareWith::LastYear)
    earlier.months = kMonths;
  else if (from.day() == 1 && from != to)
    earlier.months = (to.year() - from.year()) * kMonths + to.month() - from.month() + 1;
  else
    earlier.days = from.daysTo(to) + 1;
  QDate first = from.addDays(-earlier.days), end = to.addDays(-earlier.days);
  if (earlier.months != 0) {
    first = from.addMonths(-earlier.months);
    end = to.addMonths(-earlier.months);
    if (endsMonth(to) && from != to) end.setDate(end.year(), end.month(), end.daysInMonth());
  }
  earlier.period = {textOf(first, letters), textOf(end, letters)};
  return earlier;
}

std::string earlierField(std::string_view figure) {
  return std::string(figure).append(comparison_detail::kEarlier);
}

std::string changeField(std::string_view figure) {
  return std::string(figure).append(comparison_detail::kChange);
}

bool isEarlierField(std::string_view field) {
  return field.ends_with(comparison_detail::kEarlier);
}

Question comparedQuestion(const Source& source, const Criteria& criteria, const Comparison& comparison) {
  const auto period = earlierPeriod(criteria.compare, {criteria.from, criteria.to});
  const Question now = source.ask(criteria);
  std::optional<Question> before;
  if (period) {
    Criteria earlier = criteria;
    earlier.from = period->period.from;
    earlier.to = period->period.to;
    before = source.ask(earlier);
  }
  return Computation([now, before, comparison, period](EnquiryReader& reader) {
    RowSet rows = answer(now, reader);
    RowSet earlier = before ? answer(*before, reader) : RowSet();
    return comparison_detail::Joined(std::move(rows), std::move(earlier), comparison, period).rows();
  });
}

}  // namespace jxc

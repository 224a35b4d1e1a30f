#include "core/enquiry.h"

#include "core/fillers.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"

#include <stdexcept>

namespace jxc {
namespace enquiry_detail {

/// The last second of a day or month. Dates are compared as text, and no month has a day behind the 31st.
QString endOf(const QString& to) {
  constexpr qsizetype kMonth = 7;
  return to + (to.size() == kMonth ? QStringLiteral("-31 23:59:59") : QStringLiteral(" 23:59:59"));
}

QString part(const QString& text) {
  return QLatin1Char('%') + text + QLatin1Char('%');
}

}  // namespace enquiry_detail

void addPeriod(Filter& filter, const Criteria& criteria, std::string_view column) {
  if (!criteria.from.isEmpty()) filter.add(compose("{}>=?", {column}), criteria.from);
  if (!criteria.to.isEmpty()) filter.add(compose("{}<=?", {column}), enquiry_detail::endOf(criteria.to));
}

void addKey(Filter& filter, const Criteria& criteria, std::initializer_list<std::string_view> columns) {
  addKey(filter, criteria, std::vector<std::string>(columns.begin(), columns.end()));
}

void addKey(Filter& filter, const Criteria& criteria, std::span<const std::string> columns) {
  // Stored texts hold the forms that typed ones were given.
  const QString key = sanitizeKeyword(criteria.key.trimmed());
  if (key.isEmpty()) return;
  Sql any("(");
  for (const std::string& column : columns) {
    if (&column != columns.data()) any.add(" or ");
    if (criteria.exact)
      any.add(compose("{}=?", {column}), key);
    else
      any.add(compose("{} like ?", {column}), enquiry_detail::part(key));
  }
  filter.add(any.add(")"));
}

void addClass(Filter& filter, const Criteria& criteria, std::string_view column) {
  if (criteria.goodsClass.isEmpty()) return;
  filter.add(compose("{} like ?", {column}), criteria.goodsClass + QLatin1Char('%'));
}

void addChoice(Filter& filter, std::string_view column, const QString& chosen) {
  if (!chosen.isEmpty()) filter.add(compose("{}=?", {column}), chosen);
}

Warehouses::Warehouses(const Criteria& criteria) : chosen_(criteria.warehouse) {
  if (chosen_ == QStringView(allKey)) chosen_.clear();
  if (isWarehouseBound()) operator_ = session().a_sn;
}

void Warehouses::restrict(Filter& filter, std::string_view column) const {
  asked_ = true;
  addChoice(filter, column, chosen_);
  if (operator_.isEmpty()) return;
  filter.add(compose("{} in (select ck_sn from jxc_ckxx where ck_asn like ?)", {column}),
             enquiry_detail::part(operator_));
}

bool Warehouses::areAll() const {
  asked_ = true;
  return chosen_.isEmpty() && operator_.isEmpty();
}

template <class Read>
RowSet EnquiryReader::stoppable(Read read) {
  progress(percent_);
  try {
    return read();
  } catch (const DbError&) {
    progress(percent_);  // an interrupted select fails: that it was stopped says more
    throw;
  }
}

RowSet EnquiryReader::select(const Sql& sql) {
  return stoppable([&] { return database_.select(sql.text(), sql.values()); });
}

void EnquiryReader::begin(const Sql& first) {
  if (!begins_) return;
  RowSet rows = select(first);
  if (!rows.isEmpty()) begins_(std::move(rows));  // a list that is not yet known to be empty does not say so
}

RowSet EnquiryReader::sums(const Sql& lines, const SumColumns& columns) {
  return stoppable([&] { return groupedSums(database_, lines.text(), lines.values(), columns); });
}

void EnquiryReader::holdMoment() {
  moment_ = std::make_shared<Transaction>(database_);
}

void EnquiryReader::progress(int percent) {
  percent_ = percent;
  if (goOn_ && !goOn_(percent)) throw EnquiryStopped();
}

Question Source::ask(const Criteria& criteria) const {
  if (plain_) return plain_(criteria);
  if (computedPlain_) return computedPlain_(criteria);
  const Warehouses warehouses(criteria);
  Question question = bound_ ? Question(bound_(criteria, warehouses)) : Question(computed_(criteria, warehouses));
  if (!warehouses.wereAskedFor()) throw std::logic_error("an enquiry does not restrict itself to warehouses");
  return question;
}

RowSet answer(const Question& question, EnquiryReader& reader) {
  if (const Sql* statement = std::get_if<Sql>(&question)) return reader.select(*statement);
  return std::get<Computation>(question)(reader);
}

RowSet answer(const Source& source, const Criteria& criteria) {
  EnquiryReader reader(accountDb());
  return answer(source.ask(criteria), reader);
}

}  // namespace jxc

#include "engine/postgres/arguments.h"

#include "engine/number_text.h"

namespace jxc::postgres {

std::span<const char* const> Arguments::of(std::span<const jet::Parameter> parameters, std::span<const Value> values,
                                           const RowSet* driving, int row) {
  const std::size_t count = parameters.size();
  pointers_.assign(count, nullptr);
  if (texts_.size() < count) texts_.resize(count);
  fit(parameters, values, driving, row);
  return {pointers_.data(), count};
}

void Arguments::putNull(int at) {
  pointers_[static_cast<std::size_t>(at - 1)] = nullptr;
}

void Arguments::putInteger(int at, std::int64_t number) {
  NumberBuffer buffer;
  putText(at, formatNumber(static_cast<long long>(number), buffer));
}

// Fifteen digits: what a double has behind them is noise of binary fractions, and the server counts in decimals.
void Arguments::putReal(int at, double number) {
  NumberBuffer buffer;
  putText(at, formatNumber(number, buffer));
}

void Arguments::putText(int at, std::string_view utf8) {
  const auto index = static_cast<std::size_t>(at - 1);
  pointers_[index] = texts_[index].assign(utf8).c_str();
}

}  // namespace jxc::postgres

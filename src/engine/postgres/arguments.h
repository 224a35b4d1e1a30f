// 参数: a caller's values as the texts that the server takes.
#pragma once

#include "engine/parameter_fitting.h"

#include <span>
#include <string>
#include <vector>

namespace jxc::postgres {

class Arguments final : ParameterFitter {
 public:
  /// The values as they are sent; valid until the next call. Throws as ParameterFitter::fit.
  std::span<const char* const> of(std::span<const jet::Parameter> parameters, std::span<const Value> values,
                                  const RowSet* driving = nullptr, int row = 0);

 private:
  void putNull(int at) override;
  void putInteger(int at, std::int64_t number) override;
  void putReal(int at, double number) override;
  void putText(int at, std::string_view utf8) override;

  std::vector<const char*> pointers_;
  std::vector<std::string> texts_;
};

}  // namespace jxc::postgres

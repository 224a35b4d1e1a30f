// 目录: tables and columns as the server has them.
#pragma once

#include "engine/row_set.h"
#include "jet/catalogue.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace jxc::postgres {

class PostgresCatalogue final : public jet::Catalogue {
 public:
  /// Runs a query with at most one value.
  using Reader = std::function<RowSet(const char* sql, const std::string* value)>;
  explicit PostgresCatalogue(Reader reader) : reader_(std::move(reader)) {}

  const jet::Table* table(std::string_view name) const override;
  /// All of them, in the order of their names.
  std::vector<jet::Table> all() const;
  /// The table when it was read already; asks nobody.
  const jet::Table* known(std::string_view name) const;
  /// What is known no more: everything, read whole at the next question, because a round trip for each table is dear.
  void forget();
  /// The same behind a statement that changed one table and is not the last of its kind: tables are read one by one.
  void forgetSome();

 private:
  void read(const std::string* name) const;

  Reader reader_;
  mutable std::unordered_map<std::string, std::unique_ptr<jet::Table>> tables_;
  mutable bool whole_ = false;
  bool single_ = false;
};

}  // namespace jxc::postgres

// 计划簿: plans made by hand, so that the running of plans is tested without the translation of statements.
#pragma once

#include "engine/sqlite/sqlite_database.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>

namespace jxc::test {

/// Statements that stand in the book have the plan written there; any other text is taken for native SQL.
struct PlanBook {
  std::map<std::string, jet::Plan, std::less<>> plans;
  int translations = 0;

  static jet::Plan native(std::string_view text) {
    jet::Plan plan;
    const std::string_view word = text.substr(0, text.find(' '));
    plan.kind = word == "select"                                        ? jet::Plan::Kind::Select
                : word == "create" || word == "alter" || word == "drop" ? jet::Plan::Kind::Definition
                                                                        : jet::Plan::Kind::Change;
    plan.parameterCount = static_cast<int>(std::count(text.begin(), text.end(), '?'));
    jet::Step step{std::string(text), {}};
    for (int i = 0; i < plan.parameterCount; ++i)
      step.parameters.push_back({.source = i});
    plan.steps.push_back(std::move(step));
    return plan;
  }

  jet::Plan find(std::string_view text) {
    ++translations;
    const auto known = plans.find(text);
    return known != plans.end() ? known->second : native(text);
  }
};

inline std::unique_ptr<Database> openBook(const std::shared_ptr<PlanBook>& book, const QString& file = {},
                                          const SqliteOptions& options = {.create = true}) {
  const sqlite::FileRole role{file, options.essential};
  return std::make_unique<sqlite::SqliteDatabase>(
      sqlite::openConnection(role, options), role,
      [book](std::string_view text, const jet::Catalogue&) { return book->find(text); });
}

/// What a call throws, or a failed test when it throws nothing.
template <class Call>
DbError failureOf(Call call) {
  try {
    call();
  } catch (const DbError& error) {
    return error;
  }
  ADD_FAILURE() << "no failure";
  return DbError(DbError::Kind::Other, {});
}

inline double number(Database& db, const char* sql) {
  return db.lookup(sql).number();
}

}  // namespace jxc::test

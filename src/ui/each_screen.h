// 逐项回答: a question that has an answer for each of several things, as a list: one key for one of them, one for all.
#pragma once

#include "core/each_prompt.h"
#include "ui/screen.h"

#include <optional>
#include <string>
#include <vector>

namespace jxc::ui {

/// The words of a question in the shape that a description of a screen refers to.
struct EachParts {
  explicit EachParts(const EachQuestion& question);
  std::vector<std::string> texts;
  std::vector<ColumnSpec> columnSpecs;
  std::vector<GridSpec> gridSpecs;
  std::vector<CommandSpec> commandSpecs;
};

class EachScreen : private EachParts, public Screen {
 public:
  explicit EachScreen(const EachQuestion& question);
  /// One for each item; nothing: the operator left.
  std::optional<std::vector<EachAnswer>> ask();

  QSize sizeHint() const override { return {860, 480}; }

 protected:
  void activate() override;

 private:
  void showAnswers(std::int64_t current);
  void answerAll(EachAnswer answer);
  void turnCurrent();

  const EachQuestion question_;
  std::vector<EachAnswer> answers_;
  Grid& gridEach = grid("gridEach");
};

}  // namespace jxc::ui

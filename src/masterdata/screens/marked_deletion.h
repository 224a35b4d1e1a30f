// 批量删除: deletes marked rows of a list and tells line by line which could not go.
#pragma once

#include "ui/screen.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace jxc {

class MarkedDeletion : public ui::Screen {
 public:
  struct Outcome {
    int deleted = 0;
    QStringList refusals = {};
  };
  /// Takes a progress that may stop it. Nothing: it was stopped, and nothing was deleted.
  using Delete = std::function<std::optional<Outcome>(const std::function<bool(int percent)>& progress)>;

  MarkedDeletion(std::string_view name, std::string_view title);
  /// Shows the dialog for so many goods, which begins when it is told to. How many were deleted.
  int run(std::size_t marked, Delete action);

 private:
  void deleteAll();
  Delete action_;
  int deleted_ = 0;
};

}  // namespace jxc

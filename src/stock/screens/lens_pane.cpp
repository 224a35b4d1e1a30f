#include "stock/screens/lens_pane.h"

#include "masterdata/goods_lenses.h"
#include "stock/screens/power_matrix.h"

#include <QVBoxLayout>

namespace jxc {
namespace lens_pane_detail {

/// Lenses of one name by their powers, spheres downwards and cylinders across.
class LensPane : public ui::RowPane {
 public:
  LensPane() : matrix_(new PowerMatrix) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(matrix_);
  }
  void show(const Row* row, const Criteria& criteria) override {
    matrix_->show(row ? lensPowerTable(row->text("g_name"), criteria) : PowerTable{});
  }
  std::optional<Sheet> sheet() const override {
    return matrix_->isEmpty() ? std::nullopt : std::optional(matrix_->sheet());
  }

 private:
  PowerMatrix* matrix_;
};

}  // namespace lens_pane_detail

ui::RowPane* makeLensPane() {
  return new lens_pane_detail::LensPane;
}

}  // namespace jxc

#include "stock/screens/lens_pane.h"

#include "masterdata/goods_lenses.h"
#include "stock/screens/power_matrix.h"

#include <QVBoxLayout>

namespace jxc {
namespace lens_pane_detail {

/// Lenses of one product or one name by their powers, spheres downwards and cylinders across.
class LensPane : public ui::RowPane {
 public:
  using Table = PowerTable (*)(const QString&, const Criteria&);
  LensPane(const char* name, std::string_view column, Table table)
      : matrix_(new PowerMatrix(name)), column_(column), table_(table) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(matrix_);
  }
  void show(const Row* row, const Criteria& criteria) override {
    matrix_->show(row ? table_(row->text(column_), criteria) : PowerTable{});
  }
  std::optional<Sheet> sheet() const override {
    return matrix_->isEmpty() ? std::nullopt : std::optional(matrix_->sheet());
  }

 private:
  PowerMatrix* matrix_;
  std::string_view column_;
  Table table_;
};

}  // namespace lens_pane_detail

ui::RowPane* makeProductPane() {
  return new lens_pane_detail::LensPane("StringGridCp", "g_qc", lensProductTable);
}

ui::RowPane* makeLensPane() {
  return new lens_pane_detail::LensPane("StringGridJp", "g_name", lensPowerTable);
}

}  // namespace jxc

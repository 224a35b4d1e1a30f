// Descriptions of document screens: a part that is spelt otherwise is refused when the screen is made. That the
// delivered ones are spelt rightly is seen by the sweep of all screens, which makes each of them.
#include "purchasing/purchase_return.h"
#include "purchasing/receipt.h"
#include "screens/harness/screen_test.h"
#include "stock/screens/audit_screen.h"
#include "stock/screens/goods_pick_screen.h"
#include "stock/screens/head_screen.h"
#include "stock/screens/trading_screen.h"

#include <optional>

namespace jxc::test::document_descriptions_test {

/// A description that can be changed, with the names that it is given.
class Changed {
 public:
  explicit Changed(const ui::ScreenSpec& spec)
      : spec_(spec),
        fields_(spec.fields.begin(), spec.fields.end()),
        grids_(spec.grids.begin(), spec.grids.end()),
        commands_(spec.commands.begin(), spec.commands.end()) {
    spec_.fields = fields_;
    spec_.grids = grids_;
    spec_.commands = commands_;
    for (auto& each : fields_)
      names_.push_back(&each.name);
    for (auto& each : grids_)
      names_.push_back(&each.name);
    for (auto& each : commands_)
      names_.push_back(&each.name);
  }
  const ui::ScreenSpec& spec() const { return spec_; }
  /// Each name in its turn with a letter too many.
  void expectRefused(const std::function<void(const ui::ScreenSpec&)>& make) {
    EXPECT_NO_THROW(make(spec_)) << spec_.name;
    for (std::string_view* name : names_) {
      const std::string_view right = *name;
      const std::string wrong = std::string(right) + 'x';
      *name = wrong;
      EXPECT_THROW(make(spec_), std::invalid_argument) << spec_.name << ' ' << right;
      *name = right;
    }
  }

 private:
  ui::ScreenSpec spec_;
  std::vector<ui::FieldSpec> fields_;
  std::vector<ui::GridSpec> grids_;
  std::vector<ui::CommandSpec> commands_;
  std::vector<std::string_view*> names_;
};

class DocumentDescriptionsTest : public ScreenTest {};

TEST_F(DocumentDescriptionsTest, AMisspeltPartIsRefused) {
  const auto check = [](std::string_view name, const auto& make) {
    Changed(ui::screenNamed(name).spec()).expectRefused(make);
  };
  const auto rules = rulesOf<receipt::rules>;
  check("F_Cgjh_Add", [&](const ui::ScreenSpec& spec) { GoodsPickScreen{{.screen = spec, .rules = rules}}; });
  check("F_Cgjh_Sele",
        [&](const ui::ScreenSpec& spec) { LineScreen{{.screen = spec, .rules = rules, .price = "tgpjjj"}}; });
  check("F_Cgjh_Check", [](const ui::ScreenSpec& spec) {
    AuditScreen{{.screen = spec, .rules = receipt::rules, .paid = "tsfje", .settleKind = u"cg"}};
  });
  check("F_ModiDateJh", [](const ui::ScreenSpec& spec) { HeadScreen{{.screen = spec, .partner = "tghs"}}; });
  check("F_Cgjh", [](const ui::ScreenSpec& spec) {
    TradingScreen{{.document = {.screen = spec,
                                .pickScreen = "F_Cgjh_Add",
                                .lineScreen = "F_Cgjh_Sele",
                                .auditScreen = "F_Cgjh_Check",
                                .importScreen = "F_Cgjh_Import",
                                .addGoods = [](const QString&) { return QString(); }},
                   .rules = receipt::rules,
                   .partner = "tghs",
                   .paid = "tsfje"}};
  });
}

TEST_F(DocumentDescriptionsTest, AnInputThatTheHeadDoesNotKeepAndALooseCommandAreRefused) {
  static constexpr ui::FieldSpec more[] = {{"tsn2", "原始单号："}, {"tyf", "运费："}, {"chkZj", "直接出库"}};
  static constexpr ui::CommandSpec loose[] = {{"btnAddNew", "新商品"}, {"btnAllKh", "全部客户"}};
  const ui::ScreenSpec& delivered = ui::screenNamed("F_Cgth").spec();
  const auto makeWith = [&](const std::optional<ui::FieldSpec>& field, const std::optional<ui::CommandSpec>& command) {
    std::vector<ui::FieldSpec> fields(delivered.fields.begin(), delivered.fields.end());
    std::vector<ui::CommandSpec> commands(delivered.commands.begin(), delivered.commands.end());
    if (field) fields.push_back(*field);
    if (command) commands.push_back(*command);
    ui::ScreenSpec spec = delivered;
    spec.fields = fields;
    spec.commands = commands;
    TradingScreen{{.document = {.screen = spec,
                                .pickScreen = "F_Cgth_Add",
                                .lineScreen = "F_Cgth_Sele",
                                .auditScreen = "F_Cgth_Check",
                                .importScreen = "F_Cgth_Import"},
                   .rules = purchase_return::rules,
                   .partner = "tghs",
                   .paid = "tsfje",
                   .pickReturned = [] { return QString(); }}};
  };
  EXPECT_NO_THROW(makeWith({}, {}));
  for (const ui::FieldSpec& each : more)
    EXPECT_THROW(makeWith(each, {}), std::invalid_argument) << each.name;
  for (const ui::CommandSpec& each : loose)
    EXPECT_THROW(makeWith({}, each), std::invalid_argument) << each.name;
}

}  // namespace jxc::test::document_descriptions_test

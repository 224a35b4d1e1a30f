#include "app/demonstration.h"

#include "core/clock.h"
#include "core/data_module.h"
#include "core/login.h"
#include "core/schema/schema.h"
#include "core/session.h"
#include "core/statements.h"
#include "masterdata/employees.h"
#include "masterdata/goods.h"
#include "masterdata/goods_classes.h"
#include "masterdata/partners.h"

namespace jxc {
namespace demonstration_detail {

/// Nobody is there to ask.
class Silent : public Prompt {
 public:
  void notice(const QString& text) override { qWarning("demonstration: %s", qPrintable(text)); }
  bool ask(const QString&) override { return true; }
  Answer askOrCancel(const QString&) override { return Answer::Yes; }
};

struct Article {
  const char16_t *number, *name, *barcode, *model, *colour;
  double purchasePrice, salePrice, stock;
};

constexpr Article kArticles[] = {
    {u"10000001", u"钛合金全框镜架", u"6901000000011", u"T-5502 53□18-140", u"枪色", 126, 398, 24},
    {u"10000002", u"板材复古圆框镜架", u"6901000000028", u"B-1160 48□21-145", u"玳瑁", 85.5, 268, 36},
    {u"10000003", u"儿童硅胶镜架", u"6901000000035", u"K-0803 44□16-120", u"湖蓝", 62, 188, 15},
    {u"10000004", u"1.56防蓝光镜片 -2.00/-0.50", u"6901000000042", u"1.56 HMC", u"", 28, 120, 120},
    {u"10000005", u"1.60非球面镜片 -3.25/-0.75", u"6901000000059", u"1.60 ASP", u"", 46.8, 198, 86},
    {u"10000006", u"1.67超薄镜片 -6.00/-1.25", u"6901000000066", u"1.67 ASP", u"", 132, 480, 42},
    {u"10000007", u"渐进多焦点镜片 ADD+1.50", u"6901000000073", u"1.56 PAL", u"", 168, 680, 18},
    {u"10000008", u"月抛隐形眼镜 -4.00 两片装", u"6901000000080", u"14.0mm BC8.6", u"透明", 38, 88, 200},
    {u"10000009", u"多功能护理液 360ml", u"6901000000097", u"360ml", u"", 17.6, 39, 64},
    {u"10000010", u"偏光太阳镜", u"6901000000103", u"S-2201 60□15-138", u"墨绿", 98, 328, 27},
    {u"10000011", u"超细纤维擦镜布", u"6901000000110", u"15×18cm", u"混色", 0.85, 5, 500},
    {u"10000012", u"硬质眼镜盒", u"6901000000127", u"大号", u"黑色", 4.2, 15, 160},
};

constexpr const char16_t* kSuppliers[] = {u"丹阳明视光学有限公司", u"上海晶朗镜片厂", u"温州钛艺眼镜有限公司",
                                          u"厦门海岸太阳镜公司"};
constexpr const char16_t* kCustomers[] = {u"青年路分店", u"实验小学视力筛查", u"王丽", u"城南社区卫生服务中心"};
constexpr const char16_t* kEmployees[] = {u"李明", u"陈静", u"赵强"};

void addPartners(const PartnerSide& side, std::span<const char16_t* const> names, Prompt& prompt) {
  int number = 0;
  for (const auto* name : names) {
    PartnerDraft draft;
    draft.name = QString::fromUtf16(name);
    draft.contact = QStringLiteral("张经理");
    draft.phone = QStringLiteral("0511-8600%1").arg(++number, 4, 10, QLatin1Char('0'));
    savePartner(side, draft, prompt);
  }
}

}  // namespace demonstration_detail

void openDemonstration() {
  using namespace demonstration_detail;
  clock::setFixed(QDateTime(QDate(2021, 5, 3), QTime(14, 30)));
  dataModule().installAccountDb(openSqlite(QStringLiteral(":memory:")));
  createAllTables(accountDb());
  upgradeSchema(accountDb());
  Silent prompt;
  login(QStringLiteral("admin"), {}, prompt);
  for (const auto* name : kEmployees) {
    EmployeeDraft draft;
    draft.name = QString::fromUtf16(name);
    saveEmployee(draft, prompt);
  }
  addPartners(supplierSide, kSuppliers, prompt);
  addPartners(customerSide, kCustomers, prompt);
  const auto root = goodsClasses(false).front();
  const auto frames = addGoodsClass(root.key, QStringLiteral("镜架及配件"), prompt);
  for (const auto& article : kArticles) {
    GoodsDraft draft;
    draft.number = QString::fromUtf16(article.number);
    draft.name = QString::fromUtf16(article.name);
    draft.barcode = QString::fromUtf16(article.barcode);
    draft.model = QString::fromUtf16(article.model);
    draft.colour = QString::fromUtf16(article.colour);
    draft.unit = QStringLiteral("副");
    draft.purchasePrice = article.purchasePrice;
    draft.salePrice = article.salePrice;
    draft.retailPrice = article.salePrice;
    draft.openingStock = article.stock;
    if (frames) draft.classNumber = frames->number;
    draft.warehouse = lookupValue("select top 1 ck_sn from jxc_ckxx order by id");
    addGoods(draft, prompt);
  }
}

}  // namespace jxc

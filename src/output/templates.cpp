#include "output/templates.h"

#include "core/clock.h"
#include "core/program_directory.h"
#include "core/station_options.h"
#include "output/print_vars.h"
#include "platform/report/template_file.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <iterator>

// Outside of any namespace: the name that the resource compiler gives.
static void initTemplateResource() {
  Q_INIT_RESOURCE(report_templates);
}

namespace jxc {
namespace templates_detail {

constexpr KnownTemplate kTemplates[] = {
    {u"cgjh", u"采购进货单", u"采购"},
    {u"cgjh2", u"采购进货单(不含进价)", u"采购"},
    {u"cgth", u"采购退货单", u"采购"},
    {u"cgth2", u"采购退货单(不含进价)", u"采购"},
    {u"cgrk", u"商品入库单", u"采购"},
    {u"jthmxb", u"进退货明细表", u"采购"},
    {u"fpcgmxb", u"进货发票明细表", u"采购"},

    {u"spxs", u"商品销售单", u"销售"},
    {u"spxs2", u"商品销售单(含零售价)", u"销售"},
    {u"spxs4", u"商品销售单(不含售价)", u"销售"},
    {u"xsth", u"顾客退货单", u"销售"},
    {u"xsth2", u"顾客退货单(含零售价)", u"销售"},
    {u"xsth4", u"顾客退货单(不含售价)", u"销售"},
    {u"spck", u"商品出库单", u"销售"},
    {u"fyd", u"发运单", u"销售", true},
    {u"xsthmxb", u"销售退货明细表", u"销售"},
    {u"fpxsmxb", u"销售发票明细表", u"销售"},
    {u"khjh", u"客户借货还货单", u"销售"},
    {u"khjh2", u"客户借货还货单(不含成本)", u"销售"},
    {u"khjhdjb", u"客户借货登记表", u"销售"},
    {u"khjhmxb", u"客户借货明细表", u"销售"},

    {u"kcdbd", u"库存调拨单", u"库存"},
    {u"kcdbd2", u"库存调拨单(售价)", u"库存"},
    {u"kcdbd3", u"库存调拨单(不含成本)", u"库存"},
    {u"kcpdd", u"库存盘点单", u"库存"},
    {u"kcpdd2", u"库存盘点单(不含成本)", u"库存"},
    {u"bsby", u"报损报溢单", u"库存"},
    {u"bsby2", u"报损报溢单(不含成本)", u"库存"},
    {u"cfd", u"商品拆分单", u"库存"},
    {u"cfd2", u"商品拆分单(不含成本)", u"库存"},
    {u"kbd", u"商品捆绑单", u"库存"},
    {u"kbd2", u"商品捆绑单(不含成本)", u"库存"},
    {u"kccx", u"当前库存表", u"库存"},
    {u"jxctjhz", u"进销存汇总表", u"库存"},
    {u"jxctjmx", u"进销存明细表", u"库存"},
    {u"goodsprice", u"商品价签", u"库存"},

    {u"ysyfysk", u"应收款单", u"往来账款"},
    {u"ysyfyfk", u"应付款单", u"往来账款"},
    {u"ysyfskd", u"收款单", u"往来账款"},
    {u"ysyffkd", u"付款单", u"往来账款"},
    {u"khsk", u"客户单据收款单", u"往来账款"},
    {u"ghsfukuan", u"供货商单据付款单", u"往来账款"},
    {u"ysksk", u"应收收款登记表", u"往来账款"},
    {u"yfkfk", u"应付付款登记表", u"往来账款"},
    {u"yskmxb", u"应收款明细表", u"往来账款"},
    {u"yskglhzb", u"应收款汇总表", u"往来账款"},
    {u"yfkmxb", u"应付款明细表", u"往来账款"},
    {u"yfkglhzb", u"应付款汇总表", u"往来账款"},
    {u"khdzd", u"客户对账单", u"往来账款"},
    {u"khdzmxb", u"客户对账明细表", u"往来账款"},
    {u"ghsdzd", u"供货商对账单", u"往来账款"},
    {u"xjyhd", u"现金银行单", u"往来账款"},
    {u"fysrd", u"费用收入单", u"往来账款"},
    {u"yyfx", u"营业分析", u"统计"},

    {u"posxp", u"销售小票(80毫米)", u"收银与会员", true},
    {u"posxp58", u"销售小票(58毫米)", u"收银与会员", true},
    {u"posxsd", u"POS销售退货单", u"收银与会员", true},
    {u"pospjd", u"配镜单", u"收银与会员", true},
    {u"possyymx", u"收银明细(80毫米)", u"收银与会员", true},
    {u"possyymx58", u"收银明细(58毫米)", u"收银与会员", true},
    {u"jbxp", u"交班小票(80毫米)", u"收银与会员", true},
    {u"jbxp58", u"交班小票(58毫米)", u"收银与会员", true},
    {u"hyxf", u"会员续费小票", u"收银与会员", true},
};

QString withoutSuffix(QStringView name) {
  return (name.endsWith(u".fr3") ? name.chopped(4) : name).toString();
}

QString optionOf(const QString& stem) {
  return QStringLiteral("template/") + stem;
}

/// What expressions of a template may call besides the functions of the dialect.
void addFunctions(report::Report& report) {
  report.setFunction(u"Capitals", 1, 1,
                     [](std::span<const Value> values) -> Value { return printedCapitals(values[0].number()); });
}

QString resourceOf(QStringView name) {
  return QStringLiteral(":/report/%1.fr3").arg(withoutSuffix(name));
}

}  // namespace templates_detail

std::span<const KnownTemplate> knownTemplates() {
  return templates_detail::kTemplates;
}

const KnownTemplate* findTemplate(QStringView name) {
  const QString stem = templates_detail::withoutSuffix(name);
  const auto found = std::ranges::find_if(templates_detail::kTemplates,
                                          [&](const KnownTemplate& each) { return stem == QStringView(each.name); });
  return found == std::end(templates_detail::kTemplates) ? nullptr : &*found;
}

std::vector<OwnTemplate> ownTemplates() {
  std::vector<OwnTemplate> own;
  for (const QString& file : QDir(programPath(QStringLiteral("report")))
                                 .entryList({QStringLiteral("*.fr3")}, QDir::Files, QDir::Name | QDir::LocaleAware)) {
    if (findTemplate(file)) continue;
    own.push_back({file});
    try {
      own.back().kind = findTemplate(report::loadTemplate(templatePath(file)).kind);
    } catch (const report::TemplateError&) {
      // What is wrong with it is told where it is opened.
    }
  }
  return own;
}

QString templateInUse(QStringView name) {
  const QString stem = templates_detail::withoutSuffix(name);
  const QString own = stationText(templates_detail::optionOf(stem));
  return !own.isEmpty() && QFile::exists(templatePath(own)) ? own : stem + QStringLiteral(".fr3");
}

void useTemplate(QStringView name, const QString& file) {
  const QString stem = templates_detail::withoutSuffix(name);
  const bool isItself = templates_detail::withoutSuffix(file) == stem;
  keepStationText(templates_detail::optionOf(stem), isItself ? QString() : file);
}

QString templatePath(QStringView name) {
  return programPath(QStringLiteral("report/%1.fr3").arg(templates_detail::withoutSuffix(name)));
}

report::Report openReport(QStringView name) {
  return reportOver(report::loadTemplate(templatePath(name)));
}

report::Report reportOver(report::Template t) {
  report::Report report(std::move(t));
  templates_detail::addFunctions(report);
  report.setNow(clock::now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
  report.setPictureFolder(programPath(QStringLiteral("picture")));
  return report;
}

report::Report sampleOf(const report::Template& t) {
  report::Report report = report::sampleReport(t);
  templates_detail::addFunctions(report);
  return report;
}

QByteArray deliveredTemplate(QStringView name) {
  initTemplateResource();
  QFile file(templates_detail::resourceOf(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList bringTemplates() {
  initTemplateResource();
  QDir().mkpath(programPath(QStringLiteral("report")));
  QStringList written;
  for (const QString& file : QDir(QStringLiteral(":/report")).entryList({QStringLiteral("*.fr3")}, QDir::Files)) {
    if (QFile::exists(templatePath(file))) continue;
    // Not a copy of the file, which is write-protected inside the program: the shop changes its own.
    QSaveFile own(templatePath(file));
    const QByteArray content = deliveredTemplate(file);
    if (own.open(QIODevice::WriteOnly) && own.write(content) == content.size() && own.commit()) written << file;
  }
  return written;
}

}  // namespace jxc

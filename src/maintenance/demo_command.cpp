#include "maintenance/demo_command.h"

#include "maintenance/demo_shop.h"

#include <QElapsedTimer>

#include <ostream>

namespace jxc {
namespace demo_command_detail {

int demo(Console& console, ConsoleWords words) {
  DemoPlan plan;
  plan.files = !console.home.isEmpty();
  bool force = false;
  while (!words.isEmpty()) {
    const QString word = words.take();
    if (word == u"--force") {
      force = true;
    } else if (word == u"--putaway") {
      plan.putaway = true;
    } else if (word == u"--months") {
      plan.months = words.takeNumber(word, 1, 240);
    } else if (word == u"--goods") {
      plan.goods = words.takeNumber(word, 20, 200000);
    } else if (word == u"--documents") {
      plan.documentsADay = words.takeNumber(word, 1, 2000);
    } else if (word == u"--seed") {
      plan.seed = static_cast<std::uint64_t>(words.takeNumber(word, 0, 2147483647));
    } else if (word == u"--until") {
      plan.lastDay = QDate::fromString(words.takeValue(word), Qt::ISODate);
      if (!plan.lastDay.isValid()) throw ConsoleMisuse(QStringLiteral("--until 后面应为日期，如 2025-06-30"));
    } else {
      throw unknownConsoleWord(word);
    }
  }
  QElapsedTimer clock;
  clock.start();
  int told = -1;
  const auto tell = [&](int percent, const QString& what) {
    if (percent / 5 == told) return;
    told = percent / 5;
    console.streams.out << percent << "%\t" << what.toStdString() << std::endl;
  };
  makeConsoleAccount(console, force, [&](const QString& file) {
    const DemoOutcome made = makeDemoFile(file, plan, tell);
    console.streams.out << QStringLiteral("商品 %1，单据 %2，库存流水 %3 行，用时 %4 秒")
                               .arg(made.goods)
                               .arg(made.documents)
                               .arg(made.ledger)
                               .arg(static_cast<double>(clock.elapsed()) / 1000, 0, 'f', 1)
                               .toStdString()
                        << std::endl;
  });
  return 0;
}

}  // namespace demo_command_detail

const ConsoleCommand demoCommand{
    u"demo",
    u"jxcctl [--home 目录 | --db 文件] demo [--months 月数] [--seed 种子] [--goods 商品数] [--documents "
    u"每天单据数]\n"
    u"       [--until 日期] [--putaway] [--force]\n"
    u"  新建演示帐套：一家有两个门店的眼镜店，按正常业务规则逐笔开单、审核、收付款。\n"
    u"  不写时为 12 个月、600 种商品、每天 40 张单据，最后一天是今天。种子、规模和日期相同，数据就完全相同。\n"
    u"  销售单记录到分秒，有赠品、单独提成的商品、按销售额和按利润提成的员工、不同级别和地区的客户。\n"
    u"  "
    u"--"
    u"putaway：启用商品入库和商品出库，有在途的商品、等待出库的销售单、部分入库和取消了余数的单据，以及借给客户的商品。"
    u"\n"
    u"  操作员 admin、周敏（店长）、孙磊（采购员）、林小雨（营业员），密码都为空。\n",
    demo_command_detail::demo};

}  // namespace jxc

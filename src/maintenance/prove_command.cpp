#include "maintenance/prove_command.h"

#include "core/data_module.h"
#include "core/session.h"
#include "core/statements.h"
#include "maintenance/prove.h"

#include <ostream>

namespace jxc {
namespace prove_command_detail {

/// The digits and the kind of costing that the account set works with.
void loadParameters(const Console& console) {
  dataModule().installAccountDb(openConsoleAccount(console, ConsoleAccess::OwnerToo));
  session().r_sn = QString::fromUtf16(builtInSn);
  session().a_sn = session().r_sn;
  loadSession();
}

void print(const proof::Proof& proof, std::ostream& out) {
  constexpr const char* names[] = {"错误", "已知", "提示"};
  for (const proof::Finding& finding : proof.findings) {
    const auto line = [&](const char* name, const QString& text) {
      if (!text.isEmpty()) out << "  " << name << text.toStdString() << '\n';
    };
    out << names[static_cast<int>(finding.weight)] << "：" << finding.check.toStdString() << "（" << finding.code
        << "），共 " << finding.count << " 处\n";
    line("位置：", finding.place);
    line("现为：", finding.stored);
    line("应为：", finding.due);
    line("原因：", finding.reason);
    line("处理：", finding.repair);
  }
}

int run(Console& console, ConsoleWords words) {
  bool wrongOnly = false;
  while (!words.isEmpty()) {
    const QString word = words.take();
    if (word != u"--wrong") throw unknownConsoleWord(word);
    wrongOnly = true;
  }
  loadParameters(console);
  proof::Proof proof = proof::prove(accountDb());
  const QString summary = proof.summary();
  if (wrongOnly) std::erase_if(proof.findings, [](const auto& each) { return each.weight != proof::Weight::Wrong; });
  print(proof, console.streams.out);
  if (proof.isClean()) {
    console.streams.out << summary.toStdString() << '\n';
    return 0;
  }
  console.streams.out.flush();
  console.streams.err << summary.toStdString() << '\n';
  return 1;
}

}  // namespace prove_command_detail

const ConsoleCommand proveCommand = {
    u"prove",
    u"jxcctl [--home 目录 | --db 文件] prove [--wrong]\n"
    u"  核对帐套：在内存中重新推算库存流水、库存、均价、本月结存、现金银行、往来、发票，并核对单据与明细，\n"
    u"  与已保存的数据比较，每类差异写出第一处、应为多少、原因和处理办法。只读取，不修改任何数据。\n"
    u"  --wrong 只写错误，不写已知差异和提示。没有错误时返回 0。\n",
    prove_command_detail::run};

}  // namespace jxc

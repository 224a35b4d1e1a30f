// What tests/print/cups_test.py sends to the print server that it has started.
#include "harness/report_samples.h"
#include "screens/harness/screen_test.h"
#include "ui/report/print.h"

namespace jxc::print_server_test {

using namespace test;

/// The printer of the server; without one there is nothing to be tested here.
class PrintServer : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    if (printer.isEmpty()) GTEST_SKIP() << "print.cups brings the printer";
    ASSERT_TRUE(ui::printerNames().contains(printer));
  }
  const QString printer = qEnvironmentVariable("JXC_TEST_PRINTER");
};

TEST_F(PrintServer, Form) {
  ui::printPages(deliveredReport("spxs", 25).prepare(), {.printer = printer, .copies = 2});
}

TEST_F(PrintServer, Slip) {
  ui::printPages(deliveredReport("posxp58", 4).prepare());  // the usual printer
}

TEST_F(PrintServer, Landscape) {
  report::Template t = saleReport(0).reportTemplate();
  t.page.landscape = true;
  ui::printPages(report::sampleReport(t, 4).prepare(), {.printer = printer});
}

}  // namespace jxc::print_server_test

// What an operator, a spreadsheet or another station does to documents within the house at the wrong moment: the same
// for all six kinds.
#include "core/numbers.h"
#include "inventory/conversions.h"
#include "inventory/stocktaking.h"
#include "inventory/transfer.h"
#include "inventory/write_off.h"
#include "masterdata/warehouses.h"
#include "stock/shop.h"

namespace jxc::bad_input_test {

using families::bundle;
using families::loss;
using families::overflow;
using families::split;
using families::stocktake;

constexpr std::reference_wrapper<const DocumentFamily> kKinds[] = {families::transfer, stocktake, loss,
                                                                   overflow,           split,     bundle};

class BadInputTest : public test::ShopTest {
 protected:
  /// A document in the making. What its kind has besides stands in `save`.
  struct Begun {
    const DocumentFamily& family;
    const LineRules& lines;
    LinePlace place;
    std::function<SaveResult(Prompt&)> save;
  };

  BadInputTest() {
    addGoods("A", 5, "6901");
    addGoods("B", 1, "6902");
    execSql("insert into jxc_ckxx (ck_sn,ck_name,ck_asn) values ('100002','分店','')");
    receive("2021-05-01", {{"A", 10, 5}, {"B", 10, 1}});
  }

  template <class Draft>
  static Begun begun(const RulesOver<Draft>& rules, const Draft& draft) {
    const DocumentRules& kind = rules.of(draft.number);
    return {.family = kind.family(),
            .lines = kind.lines(),
            .place = {.number = draft.number, .date = draft.date, .warehouse = draft.warehouse},
            .save = [&rules, draft](Prompt& prompt) { return rules.save(draft, prompt); }};
  }
  /// A document of the kind, without lines yet.
  Begun begin(const DocumentFamily& kind, const QString& note = {}) {
    const auto noted = [&](auto draft) {
      draft.note = note;
      return draft;
    };
    if (&kind == &families::transfer) {
      transfer::TransferDraft draft = noted(transfer::rules().fresh({}));
      draft.into = u"100002"_qs;
      return begun(transfer::rules(), draft);
    }
    if (&kind == &stocktake) return begun(stocktaking::rules(), noted(stocktaking::rules().fresh({})));
    if (&kind == &loss || &kind == &overflow) return begun(write_off::rules(), noted(write_off::fresh(kind, {})));
    const ConversionRules& rules = &kind == &split ? conversions::split() : conversions::bundle();
    ConversionDraft draft = noted(rules.fresh({}));
    draft.goods = &kind == &split ? u"B"_qs : u"A"_qs;
    draft.number = rules.keepWhole(draft);
    return begun<ConversionDraft>(rules, draft);
  }
  static QString partOf(const DocumentFamily& kind) { return &kind == &bundle ? u"B"_qs : u"A"_qs; }
  LineResult add(const Begun& document, double quantity, const QString& note = {}) {
    LineDraft line = document.lines.newLine(partOf(document.family), document.place, false);
    line.amounts.setQuantity(quantity);
    line.note = note;
    return document.lines.addLine(Lines::Draft, document.place, line, prompt);
  }
  /// One that waits, with two pieces of one goods. Its number.
  QString waiting(const DocumentFamily& kind) {
    const Begun document = begin(kind);
    add(document, 2);
    prompt.willSayYes();
    return document.save(prompt).number;
  }
  QString audited(const DocumentFamily& kind) {
    const QString number = waiting(kind);
    EXPECT_EQ(audit(number), AuditOutcome::Audited);
    return number;
  }
  std::int64_t lineOf(const DocumentFamily& kind) {
    return static_cast<std::int64_t>(lookupNumber(compose("select max(id) from {}", {kind.lines})));
  }
  /// All that a command on a document could have changed, but the log.
  QString books(const DocumentFamily& kind) {
    return row(compose("select * from {} order by id", {kind.head})) + u" | "_qs +
           row(compose("select * from {} order by id", {kind.lines})) + u" | "_qs +
           row("select * from jxc_goodslist order by id") + u" | "_qs + row("select * from jxc_kcsp order by id");
  }
};

// Each command of each kind, while its question stands or its dialog is open.
TEST_F(BadInputTest, WhatAnotherStationHasDoneMeanwhileIsToldAndNothingIsChanged) {
  for (const DocumentFamily& kind : kKinds) {
    const auto deletes = [&](const QString& number) {
      prompt.willSayYes();
      deleteWaitingDocument(kind, number, prompt);
    };
    const auto cancels = [&](const QString& number) {
      prompt.willSayYes();
      cancelDocument(number, prompt);
    };
    const auto audits = [&](const QString& number) { audit(number); };
    using Other = std::function<void(const QString&)>;
    using Command = std::function<bool(const QString&, Prompt&)>;
    const Command auditing = [&](const QString& number, Prompt& asked) {
      return auditAll({{.number = number, .date = u"2021-05-03"_qs}}, asked).value_or(0) > 0;
    };
    const Command cancelling = [](const QString& number, Prompt& asked) { return cancelDocument(number, asked); };
    const Command deleting = [&](const QString& number, Prompt& asked) {
      return deleteWaitingDocument(kind, number, asked);
    };
    // A dialog or an open cell is a question, too.
    const auto inDialog = [&](Command command) -> Command {
      return [command](const QString& number, Prompt& asked) {
        asked.ask({});
        return command(number, asked);
      };
    };
    const LineRules& lines = begin(kind).lines;
    const Command changing = inDialog([&](const QString& number, Prompt& asked) {
      LineDraft line = lines.newLine(partOf(kind), {.number = number, .warehouse = test::mainWarehouse}, false);
      line.amounts.setQuantity(3);
      return lines.changeLine(Lines::Waiting, lineOf(kind), {.number = number}, line, asked);
    });
    const Command typing = inDialog([&](const QString&, Prompt& asked) {
      return lines.setChange("3", u"sl", Lines::Waiting, lineOf(kind), asked) != 0;
    });
    const Command adding = inDialog([&](const QString& number, Prompt& asked) {
      LineDraft line = lines.newLine(partOf(kind), {.number = number, .warehouse = test::mainWarehouse}, false);
      line.amounts.setQuantity(3);
      return bool(lines.addLine(Lines::Waiting, {.number = number}, line, asked));
    });
    const Command takingOff = inDialog(
        [&](const QString& number, Prompt& asked) { return deleteWaitingLine(kind, number, lineOf(kind), asked); });
    const Command redating = inDialog([&](const QString& number, Prompt& asked) {
      return !changeWaitingHead(kind, number, {.date = u"2021-05-02"_qs}, asked).isEmpty();
    });
    const struct {
      const char* what;
      bool isAudited;
      Other other;
      Command command;
    } cases[] = {{"audit, audited", false, audits, auditing},      {"audit, deleted", false, deletes, auditing},
                 {"cancel, cancelled", true, cancels, cancelling}, {"delete, audited", false, audits, deleting},
                 {"delete, deleted", false, deletes, deleting},    {"change, audited", false, audits, changing},
                 {"change, deleted", false, deletes, changing},    {"type, audited", false, audits, typing},
                 {"type, deleted", false, deletes, typing},        {"add, audited", false, audits, adding},
                 {"add, deleted", false, deletes, adding},         {"take off, audited", false, audits, takingOff},
                 {"redate, audited", false, audits, redating},     {"redate, deleted", false, deletes, redating}};
    for (const auto& each : cases) {
      SCOPED_TRACE(words(kind.name).toStdString() + ": " + each.what);
      Transaction trial(accountDb());
      const QString number = each.isAudited ? audited(kind) : waiting(kind);
      QString after;
      test::WhileAsked asked([&] {
        each.other(number);
        after = books(kind);
      });
      EXPECT_FALSE(each.command(number, asked));
      EXPECT_EQ(books(kind), after);
      EXPECT_TRUE(asked.notices.join(u'|').contains(u"没有改动任何数据"_qs)) << asked.notices.join(u'|').toStdString();
      EXPECT_EQ(test::brokenInvariants(), QStringList());
    }
  }
}

// The same operator sits at two stations and has one draft on both.
TEST_F(BadInputTest, ADraftThatWasSavedElsewhereIsADocumentAndNoDraft) {
  for (const DocumentFamily& kind : kKinds) {
    SCOPED_TRACE(words(kind.name).toStdString());
    Transaction trial(accountDb());
    const Begun here = begin(kind);
    const std::int64_t line = add(here, 2).id;
    QString after;
    test::WhileAsked asked([&] {
      EXPECT_TRUE(here.save(prompt.willSayYes()));
      EXPECT_EQ(audit(here.place.number), AuditOutcome::Audited);
      after = books(kind);
    });
    EXPECT_FALSE(here.save(asked));
    EXPECT_EQ(asked.notices.size(), 1);
    // Neither leaving the screen nor a line or a date changed on it reaches the document.
    EXPECT_EQ(leaveDraft(kind, here.place.number, prompt), Answer::No);
    discardDraft(kind, here.place.number);
    deleteDraftLine(kind, line);
    EXPECT_EQ(here.lines.setChange("9", u"sl", Lines::Draft, line, prompt), 0);
    here.lines.moveDraftTo(here.place);
    EXPECT_NE(redateDraft(kind, here.place.number, "2021-05-02"), here.place.number);
    EXPECT_EQ(books(kind), after);
    // What is entered now begins a document of its own.
    EXPECT_NE(add(here, 1).number, here.place.number);
    PickingMemory memory;
    EXPECT_NE(here.lines.stageGoods(partOf(kind), 1, here.place, Lines::Draft, memory, prompt), 0);
    const CopyResult picked = here.lines.copyStaged(here.place, Lines::Draft);
    EXPECT_EQ(picked.lines, 1);
    EXPECT_NE(picked.number, here.place.number);

    // Emptied at the other one: nothing is left to save.
    const Begun next = begin(kind);
    add(next, 2);
    test::WhileAsked emptied([&] {
      execSql(compose("delete from {} where gl_djh=? and g_sn=?", {kind.lines}), next.place.number, partOf(kind));
    });
    EXPECT_FALSE(next.save(emptied));
    EXPECT_FALSE(rowExists(kind.head, kind.number, next.place.number));
  }
}

TEST_F(BadInputTest, QuantitiesNotesAndCodesThatNoDocumentHas) {
  const QString tooMany = u"数量过大，请检查是否输入了条码或单价！"_qs;
  const QString longText(500, u'备');
  for (const DocumentFamily& kind : kKinds) {
    SCOPED_TRACE(words(kind.name).toStdString());
    const LineTable& table = kind.line;
    const Begun document = begin(kind, longText);
    const LineRules& lines = document.lines;
    LineDraft typed = lines.newLine(partOf(kind), document.place, false);
    for (const double quantity : {1e12, 1e8}) {
      typed.amounts.setQuantity(quantity);
      EXPECT_EQ(prompt.refused(lines.mayWrite(typed, document.place, prompt)), tooMany);
    }
    PickingMemory memory;
    EXPECT_EQ(lines.stageGoods(partOf(kind), 1e12, document.place, Lines::Draft, memory, prompt), 0);
    EXPECT_EQ(lines.enterBarcode(document.place, QString(1000, u'9'), false, prompt).outcome, Scan::NotFound);

    // Two decimals by parameter: what is seen is what moves.
    const std::int64_t id = add(document, 1.006, longText).id;
    const auto quantity = [&] {
      return lookupNumber(compose("select {} from {} where id=?", {table.columns->quantity, kind.lines}), id);
    };
    EXPECT_EQ(quantity(), 1.01);
    for (const auto& [cell, kept] :
         {std::pair("2.344", 2.34), {"3.345", 3.35}, {"0.001", 1.0}, {"1e400", 1.0}, {"abc", 1.0}}) {
      EXPECT_TRUE(lines.cellAllows(cell, u"sl", Lines::Draft, id, document.place, prompt));
      lines.setChange(cell, u"sl", Lines::Draft, id, prompt);
      if (kind.isCount() && QByteArray(cell) == "0.001") continue;  // there nothing is a quantity
      EXPECT_EQ(quantity(), kept) << cell;
    }
    EXPECT_FALSE(lines.cellAllows("1000000000000", u"sl", Lines::Draft, id, document.place, prompt));
    EXPECT_EQ(prompt.lastNotice(), tooMany);

    const QString number = document.save(prompt.willSayYes()).number;
    EXPECT_EQ(lookupValue(compose("select {} from {} where gl_djh=?", {kind.note, kind.head}), number).size(), 200);
    if (!table.note.empty()) {
      EXPECT_EQ(lookupValue(compose("select {} from {} where id=?", {table.note, kind.lines}), id).size(),
                table.noteWidth);
    }
  }
}

TEST_F(BadInputTest, AWarehouseThatIsDeletedOrTakenAwayMeanwhile) {
  const auto deleted = [this] {
    return deleteWarehouse(lookupNumber("select id from jxc_ckxx where ck_sn='100002'"), prompt);
  };
  for (const DocumentFamily& kind : kKinds) {
    SCOPED_TRACE(words(kind.name).toStdString());
    Transaction trial(accountDb());
    // Gone between save and audit, past the refusal below: told, and nothing changes.
    const QString number = waiting(kind);
    const Begun document = begin(kind);
    add(document, 2);
    execSql("update jxc_ckxx set ck_sn='100009' where ck_sn='100001'");
    const QString before = books(kind);
    EXPECT_THROW(audit(number), std::runtime_error);
    EXPECT_EQ(books(kind), before);
    EXPECT_EQ(prompt.refused(document.save(prompt)), "所选仓库已被删除，或不再允许您使用，请重新选择仓库！");
    execSql("update jxc_ckxx set ck_sn='100001',ck_asn='100007,' where ck_sn='100009'");
    // Taken away from the operator while his lines stand.
    setParameter("cs_cgyh", 1);
    execSql(compose("update {} set a_name='店员' where gl_djh=?", {kind.lines}), document.place.number);
    becomeOperator("店员", "100008", "100008");
    EXPECT_EQ(prompt.refused(document.save(prompt)), "所选仓库已被删除，或不再允许您使用，请重新选择仓库！");
    execSql("update jxc_ckxx set ck_asn='100007,100008,' where ck_sn='100001'");
    EXPECT_TRUE(document.save(prompt.willSayYes()));
    becomeOperator("admin", "100001", "100001");
    setParameter("cs_cgyh", 0);
  }
  // Goods are on their way to it, or a line of a draft stands in it.
  const QString sent = waiting(families::transfer);
  EXPECT_EQ(prompt.refused(deleted()), "该仓库正在使用，不能删除！\r\n\r\n仓库 100002 分店\r\n用于：库存调拨单 " +
                                           sent + "\r\n\r\n请先在那里选择其他仓库，再删除。");
  prompt.willSayYes();
  deleteWaitingDocument(families::transfer, sent, prompt);
  Begun apart = begin(split);
  apart.place.warehouse = u"100002"_qs;
  add(apart, 1);
  EXPECT_FALSE(deleted());
  discardDraft(split, apart.place.number);
  prompt.willSayYes();
  EXPECT_TRUE(deleted());
}

// Begun before midnight and saved after it: the document stays one of its day, with the number of that day.
TEST_F(BadInputTest, TheDayChangesWhileADocumentIsMade) {
  for (const DocumentFamily& kind : kKinds) {
    SCOPED_TRACE(words(kind.name).toStdString());
    Transaction trial(accountDb());
    setClock("2021-05-03 23:59:50");
    const Begun document = begin(kind);
    add(document, 2);
    setClock("2021-05-04 00:00:10");
    if (!kind.isCount()) add(document, 1);
    const QString number = document.save(prompt.willSayYes()).number;
    EXPECT_EQ(number.mid(2, 6), "210503");
    EXPECT_EQ(audit(number), AuditOutcome::Audited);
    EXPECT_EQ(row(compose("select {},{} from {} where gl_djh=?", {kind.date, kind.checkDate, kind.head}), number),
              "2021-05-03 2021-05-04");
    EXPECT_EQ(begin(kind).place.date, "2021-05-04");
    EXPECT_EQ(test::brokenInvariants(), QStringList());
    setClock("2021-05-03 14:30:00");
  }
}

}  // namespace jxc::bad_input_test

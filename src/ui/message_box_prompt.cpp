#include "ui/message_box_prompt.h"

#include "core/habits.h"
#include "core/text.h"
#include "ui/each_screen.h"
#include "ui/keyless_boxes.h"
#include "ui/secret_screen.h"

#include <QApplication>
#include <QCheckBox>
#include <QEventLoop>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QShortcut>

#include <utility>

namespace jxc::ui {
namespace message_box_prompt_detail {

QWidget* above(QWidget* wished) {
  if (auto* modal = QApplication::activeModalWidget()) return modal;
  return wished && wished->isVisible() ? wished : QApplication::activeWindow();
}

// Business texts carry "\r\n"; the box knows "\n" only.
QString boxText(QString text) {
  return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

/// Shows the box until it is answered.
void run(QMessageBox& box) {
  if (!box.parentWidget() || box.parentWidget()->window() != KeylessBoxes::below()) {
    box.exec();
    return;
  }
  box.setWindowModality(Qt::NonModal);
  box.setAttribute(Qt::WA_ShowWithoutActivating);
  box.setWindowFlag(Qt::WindowDoesNotAcceptFocus);
  auto* before = std::exchange(KeylessBoxes::shown(), &box);
  const auto gone = qScopeGuard([before] { KeylessBoxes::shown() = before; });
  QEventLoop loop;
  QObject::connect(&box, &QDialog::finished, &loop, &QEventLoop::quit);
  box.show();
  loop.exec();
}

/// `mark`: what the operator may mark besides his answer; null without.
Answer question(QWidget* parent, const QString& text, bool withCancel, QCheckBox* mark = nullptr) {
  QMessageBox box(QMessageBox::Question, QStringLiteral("信息提醒"), boxText(text), QMessageBox::NoButton,
                  above(parent));
  box.setTextFormat(Qt::PlainText);
  auto* yes = box.addButton(QStringLiteral("是(&Y)"), QMessageBox::YesRole);
  auto* no = box.addButton(QStringLiteral("否(&N)"), QMessageBox::NoRole);
  yes->setObjectName(QStringLiteral("btnYes"));
  no->setObjectName(QStringLiteral("btnNo"));
  yes->setShortcut(Qt::Key_Y);
  no->setShortcut(Qt::Key_N);
  // A button has one key of its own; who holds Alt, as the underlined letter asks for, is heard too.
  for (const auto& [key, button] : {std::pair("Alt+Y", yes), std::pair("Alt+N", no)}) {
    QObject::connect(new QShortcut(QKeySequence(QLatin1String(key)), &box), &QShortcut::activated, button,
                     &QPushButton::click);
  }
  QPushButton* cancel = nullptr;
  if (withCancel) {
    cancel = box.addButton(QStringLiteral("取消(Esc)"), QMessageBox::RejectRole);
    cancel->setObjectName(QStringLiteral("btnCancel"));
  }
  if (mark) box.setCheckBox(mark);
  box.setDefaultButton(yes);
  box.setEscapeButton(withCancel ? cancel : no);
  run(box);
  if (box.clickedButton() == yes) return Answer::Yes;
  return withCancel && box.clickedButton() != no ? Answer::Cancel : Answer::No;
}

/// `offered`: what may be done about it; empty without. Whether it was chosen.
bool tell(QWidget* parent, const QString& text, const QString& offered) {
  QMessageBox box(QMessageBox::Information, QStringLiteral("系统提示"), boxText(text), QMessageBox::NoButton,
                  above(parent));
  box.setTextFormat(Qt::PlainText);
  QPushButton* command = nullptr;
  if (!offered.isEmpty()) {
    command = box.addButton(offered, QMessageBox::ActionRole);
    command->setObjectName(QStringLiteral("btnOffer"));
  }
  auto* ok = box.addButton(QStringLiteral("确定"), QMessageBox::AcceptRole);
  ok->setObjectName(QStringLiteral("btnOK"));
  box.setDefaultButton(ok);
  box.setEscapeButton(ok);
  run(box);
  return command && box.clickedButton() == command;
}

}  // namespace message_box_prompt_detail

void MessageBoxPrompt::notice(const QString& text) {
  message_box_prompt_detail::tell(parent_, text, {});
}

bool MessageBoxPrompt::offer(const QString& text, const QString& command) {
  return message_box_prompt_detail::tell(parent_, text, command);
}

bool MessageBoxPrompt::ask(const QString& text) {
  return message_box_prompt_detail::question(parent_, text, false) == Answer::Yes;
}

bool MessageBoxPrompt::askUnlessHabit(const QString& text, const Habit& habit) {
  if (isHabit(habit)) return true;
  bool always = false;
  auto* mark = new QCheckBox(words(habit.words) + u"(&D)"_qs);  // the box takes it
  mark->setObjectName(QStringLiteral("chkAlways"));
  QObject::connect(mark, &QCheckBox::toggled, [&always](bool on) { always = on; });
  const bool yes = message_box_prompt_detail::question(parent_, text, false, mark) == Answer::Yes;
  if (yes && always) setHabit(habit, true);
  return yes;
}

std::optional<std::vector<EachAnswer>> MessageBoxPrompt::askEach(const EachQuestion& question) {
  return EachScreen(question).ask();
}

std::optional<QString> MessageBoxPrompt::askSecret(const QString& text) {
  return SecretScreen(text).ask();
}

Answer MessageBoxPrompt::askOrCancel(const QString& text) {
  return message_box_prompt_detail::question(parent_, text, true);
}

}  // namespace jxc::ui

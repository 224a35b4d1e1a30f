#include "core/screens/command_runner.h"

#include "core/rights.h"
#include "core/screens/not_yet.h"
#include "core/session.h"
#include "core/text.h"
#include "ui/display.h"

#include <algorithm>
#include <map>
#include <string>

namespace jxc {
namespace command_runner_detail {

std::map<std::string, std::function<void()>, std::less<>>& actions() {
  static std::map<std::string, std::function<void()>, std::less<>> all;
  return all;
}

std::string_view resolved(std::string_view name) {
  const auto all = ui::repeats();
  const auto found = std::find_if(all.begin(), all.end(), [&](const auto& r) { return r.name == name; });
  return found == all.end() ? name : found->runs;
}

// The parameters that shape a page.
bool parameterOn(std::string_view name) {
  const auto& s = session();
  const std::pair<std::string_view, const QString*> known[] = {
      {"cs_sprk", &s.cs_sprk}, {"cs_spck", &s.cs_spck}, {"cs_kddy", &s.cs_kddy}, {"cs_kp", &s.cs_kp}};
  for (const auto& [parameter, text] : known) {
    if (parameter == name) return strIsTrue(*text);
  }
  throw std::invalid_argument("no parameter " + std::string(name));
}

}  // namespace command_runner_detail

bool isAllowed(const ui::CommandDefinition& command) {
  if (command.guard == ui::Guard::None) return true;
  if (command.guard == ui::Guard::SystemRole) return isAdministratorNow();
  return std::any_of(command.positions.begin(), command.positions.end(),
                     [&](int position) { return position > 0 && hasRight(command.group, position); });
}

bool mayRun(const ui::CommandDefinition& command, Prompt& prompt) {
  if (isAllowed(command)) return true;
  prompt.notice(refusalOf(command));
  return false;
}

QString refusalOf(const ui::CommandDefinition& command) {
  const QString text = ui::qs(command.refusal);
  return command.guard == ui::Guard::SystemRole ? text : noRightText(text);
}

bool isShown(const ui::CommandDefinition& command) {
  using command_runner_detail::parameterOn;
  if (!command.parameter.empty()) return parameterOn(command.parameter);
  return command.notParameter.empty() || !parameterOn(command.notParameter);
}

void runCommand(std::string_view name, Prompt& prompt, const QString& searched) {
  const auto* command = ui::findCommand(command_runner_detail::resolved(name));
  if (!command) throw std::invalid_argument("no command " + std::string(name));
  if (!mayRun(*command, prompt)) return;
  if (command->screen.empty()) {
    const auto action = command_runner_detail::actions().find(command->name);
    if (action != command_runner_detail::actions().end()) action->second();
    return;
  }
  openOrTell(command->screen, ui::qs(command->caption), searched);
}

void setCommandAction(std::string_view name, std::function<void()> action) {
  command_runner_detail::actions().insert_or_assign(std::string(name), std::move(action));
}

}  // namespace jxc

// 时间段菜单: the drop-down of named periods that sets the two dates of an enquiry.
#pragma once

#include "ui/field.h"

#include <QPushButton>

#include <functional>

namespace jxc::ui {

/// Makes the button drop down the periods, among them the last twelve months by name; choosing one sets both dates (or
/// both months) and runs `chosen`.
void addPeriodMenu(QPushButton& button, Field& from, Field& to, std::function<void()> chosen = {});

}  // namespace jxc::ui

// 样式: the style sheet that all skins share; @names are the colours of the skin.
#pragma once

#include <utility>

namespace jxc::ui::skin_detail {

inline constexpr std::pair<const char*, const char*> kUsualColours[] = {
    {"window", "#f3f5f7"}, {"base", "#ffffff"},       {"zebra", "#f7f9fb"},     {"text", "#1f2933"},
    {"muted", "#7b8794"},  {"line", "#cbd2d9"},       {"button", "#eef1f4"},    {"hover", "#e0eaf4"},
    {"accent", "#1565a9"}, {"accentText", "#ffffff"}, {"selection", "#cfe3f6"}, {"selectionText", "#102a43"},
    {"header", "#e9edf1"}, {"bar", "#dfe5eb"},        {"good", "#1b7a3d"},      {"warning", "#a65b00"},
    {"bad", "#b3261e"},
};

inline constexpr const char* kStyle = R"(
QLineEdit, QComboBox, QPlainTextEdit, QTextEdit, QAbstractSpinBox {
  border: 1px solid @line; border-radius: 3px; padding: 2px 5px; background: @base; color: @text;
  selection-background-color: @accent; selection-color: @accentText; }
QLineEdit, QComboBox, QAbstractSpinBox { min-height: 20px; }
QLineEdit:focus, QComboBox:focus, QPlainTextEdit:focus, QTextEdit:focus, QAbstractSpinBox:focus {
  border: 2px solid @accent; padding: 1px 4px; }
QLineEdit[readOnlyLook="true"], QPlainTextEdit[readOnlyLook="true"] { background: @window; }
QLineEdit:disabled, QComboBox:disabled, QPlainTextEdit:disabled { background: @window; color: @muted; }
QComboBox::drop-down { border: none; width: 22px; }
QComboBox::down-arrow { image: url(:/look/arrow-down.svg); width: 12px; height: 12px; }
QAbstractSpinBox::up-button, QAbstractSpinBox::down-button { border: none; width: 18px; background: transparent; }
QAbstractSpinBox::up-arrow { image: url(:/look/arrow-up.svg); width: 10px; height: 10px; }
QAbstractSpinBox::down-arrow { image: url(:/look/arrow-down.svg); width: 10px; height: 10px; }
QComboBox QAbstractItemView { border: 1px solid @line; background: @base; selection-background-color: @selection;
  selection-color: @selectionText; }
QPushButton { border: 1px solid @line; border-radius: 3px; padding: 4px 12px; background: @button; color: @text;
  min-height: 20px; }
QPushButton:hover { background: @hover; border-color: @accent; }
QPushButton:focus { border: 2px solid @accent; padding: 3px 11px; }
QPushButton:pressed { background: @selection; }
QPushButton:disabled { color: @muted; background: @window; }
QPushButton::menu-indicator, QToolButton::menu-indicator { image: url(:/look/arrow-down.svg); width: 10px; height: 10px;
  subcontrol-origin: padding; subcontrol-position: center right; right: 5px; }
QPushButton:default, QPushButton[main="true"] { background: @accent; color: @accentText; border-color: @accent; }
QPushButton[main="true"]:hover { border-color: @text; }
QPushButton[main="true"]:disabled { background: @window; color: @muted; border-color: @line; }
QTableView, QTreeView, QListView { border: 1px solid @line; background: @base; alternate-background-color: @zebra;
  gridline-color: @header; selection-background-color: @selection; selection-color: @selectionText; }
QTableView:focus, QTreeView:focus, QListView:focus { border: 1px solid @accent; }
QTreeView::item, QListWidget::item { min-height: 20px; }
QTreeView { show-decoration-selected: 0; }
QTableView QLineEdit { border: 1px solid @accent; border-radius: 0; padding: 0 3px; min-height: 0; }
QHeaderView::section { background: @header; color: @text; border: none; border-right: 1px solid @line;
  border-bottom: 1px solid @line; padding: 4px 6px; }
QHeaderView { background: @header; }
QLabel[emptyHint="true"] { color: @muted; background: transparent; }
QLabel[explanation="true"] { color: @muted; }
QLabel[warning="true"] { color: @warning; }
QLabel[heading="true"] { color: @accent; font-weight: bold; }
QLabel[title="true"] { font-size: 15pt; color: @accent; }
QGroupBox { border: 1px solid @line; border-radius: 4px; margin-top: 9px; padding-top: 6px; }
QGroupBox::title { subcontrol-origin: margin; left: 8px; padding: 0 3px; color: @accent; }
QTabBar::tab { padding: 5px 14px; border: none; border-bottom: 3px solid transparent; color: @text; }
QTabBar::tab:selected { border-bottom: 3px solid @accent; color: @accent; }
QTabBar::tab:hover { background: @hover; }
QTabBar::tab:focus { background: @selection; }
QCheckBox::indicator, QTreeView::indicator, QListView::indicator { width: 14px; height: 14px; border: 1px solid @muted; border-radius: 2px; background: @base; }
QCheckBox::indicator:focus { border: 2px solid @accent; width: 12px; height: 12px; }
QCheckBox::indicator:checked, QTreeView::indicator:checked, QListView::indicator:checked {
  background: @accent; border-color: @accent; image: url(:/look/check.svg); }
QTreeView::indicator:indeterminate { background: @muted; }
QRadioButton::indicator { width: 14px; height: 14px; border: 1px solid @muted; border-radius: 8px; background: @base; }
QRadioButton::indicator:checked { width: 8px; height: 8px; border: 4px solid @accent; }
QRadioButton::indicator:disabled { background: @window; border-color: @line; }
QCheckBox::indicator:disabled { background: @window; border-color: @line; }
QCheckBox:focus, QRadioButton:focus { color: @accent; }
QMenu { border: 1px solid @line; background: @base; }
QMenu::item { padding: 4px 24px 4px 12px; }
QMenu::item:selected { background: @selection; color: @selectionText; }
QStatusBar { background: @bar; }
#quietLine { background: transparent; color: @accent; }
QStatusBar::item { border: none; }
QToolTip { border: 1px solid @line; background: @base; color: @text; padding: 2px; }
QProgressBar { border: 1px solid @line; border-radius: 3px; text-align: center; max-height: 14px; }
QProgressBar::chunk { background: @accent; }
#sideBar { background: @bar; }
#pageTabs QPushButton { border: none; border-left: 4px solid transparent; border-radius: 0; background: transparent;
  text-align: left; padding: 9px 16px; }
#pageTabs QPushButton:hover { background: @hover; }
#pageTabs QPushButton:focus { background: @hover; border: 1px solid @accent; border-left: 4px solid @accent; }
#pageTabs QPushButton:checked { background: @window; border-left: 4px solid @accent; color: @accent; }
QToolButton[tile="true"] { background: @base; border: 1px solid @line; border-radius: 6px; padding: 10px; }
QToolButton[tile="true"]:hover { border-color: @accent; background: @hover; }
QToolButton[tile="true"]:focus { border: 2px solid @accent; padding: 9px; }
QPushButton[sideCommand="true"] { text-align: left; border: none; background: transparent; padding: 7px 10px; }
QToolButton[noRight="true"], QPushButton[noRight="true"] { color: @muted; }
QPushButton[alarming="true"], QPushButton[alarming="true"]:hover { color: @bad; }
QPushButton[sideCommand="true"]:hover { background: @hover; }
QPushButton[sideCommand="true"]:focus { border: 1px solid @accent; padding: 6px 9px; }
)";

}  // namespace jxc::ui::skin_detail

// 文件对话框: the operator chooses a file; the folder is remembered, and tests answer in his place.
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace jxc::ui {

/// Asks where to save. `filters` as "(*.xls);;(*.xlsx)", the first one proposed; a name without one of their endings
/// gets the ending of the filter that was chosen. Empty when the operator leaves it. `folder`: where such files belong;
/// else, and for what is opened, the folder of the last time.
QString chooseSaveFile(QWidget* parent, const QString& title, const QString& name, const QString& filters,
                       const QString& folder = {});
/// Asks which file to open; empty when the operator leaves it.
QString chooseOpenFile(QWidget* parent, const QString& title, const QString& filters);

/// Asks for the folder that many files go to; empty when the operator leaves it.
QString chooseFolder(QWidget* parent, const QString& title);

/// Opens a file with what this machine has for it. False: it has nothing.
bool openWithViewer(const QString& file);
/// Answers instead of a viewer (tests).
void setViewerAnswer(std::function<bool(const QString& file)> answer);

/// Answers all dialogs instead of a window (tests): gets the proposed name (empty when opening) and the filters.
void setFileAnswer(std::function<QString(const QString& name, const QString& filters)> answer);

}  // namespace jxc::ui

// 附件服务器: the FTP server that attachments may lie on, as the operator set it, and the files there.
#pragma once

#include "accounts/attachments.h"
#include "core/prompt.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace jxc::attachments {

/// FTP参数. Texts as they are typed; what their columns hold is checked by the inputs.
struct ServerSettings {
  QString host, user, password;
  QString port = QStringLiteral("21");
  QString folder;           // on the server; empty: where it lets the user in
  bool mayBePlain = false;  // name, password and files go unencrypted where the server offers no encryption
  QString trusted;  // pin of the server's own certificate that the operator trusts; empty: known authorities only
};

/// As they stand; nothing while no server is set, and attachments go into their folder.
std::optional<ServerSettings> serverSettings();
/// In place of those that stand. Without a host the server is given up, which is asked about. False when refused.
bool saveServerSettings(const ServerSettings& settings, Prompt& prompt);
/// Whether attachments can be kept there: logs in, stores a few bytes and removes them; tells how it went. What the
/// operator says meanwhile, of a certificate that nobody vouches for or a server that does not encrypt, stands in the
/// settings afterwards, which are not saved. No password goes out before he has said it.
bool testServer(ServerSettings& settings, Prompt& prompt, const Progress& progress = {});

// Of attachments.cpp. `folder` is one of the two, `name` a plain one; the first three throw AttachmentError.
void storeOnServer(const QString& from, const QString& folder, const QString& name, const Progress& progress);
/// A copy under the shown name, of the first of the names that is there.
QString fetchFromServer(const QString& folder, const QStringList& names, const QString& shown,
                        const Progress& progress);
void removeFromServer(const QString& folder, const QString& name, const Progress& progress);
/// Begins to remove a file beside the window, or looks how far that is. Nothing when no server is set.
Leaving removeFromServerBeside(const QString& folder, const QString& name);

/// How long a server may be silent, and a file of certificates that count instead of the machine's (tests).
void setServerTerms(std::chrono::milliseconds silence, const QString& authorities);

}  // namespace jxc::attachments

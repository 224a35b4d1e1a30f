// FTP: files on a server, over a line that is encrypted unless the operator allowed otherwise.
#pragma once

#include "platform/net/call.h"

#include <QString>

#include <memory>

namespace jxc::net {

struct FtpServer {
  QString host;  // a name or an address, of either version
  int port = 21;
  QString user, password;
  QString folder;           // where the files go; has to be there. Empty: where the server lets the user in
  bool mayBePlain = false;  // name, password and file go unencrypted where the server offers no encryption
  QString trusted;  // pin of a certificate (Certificate::pin) that counts whoever issued it, and no other then; empty:
                    // the authorities of the terms decide
};

/// A file below the folder. Names are plain ones, and chosen by the program.
struct FtpFile {
  QString folder;  // made when it is not there; one step, no slash at its end
  QString name;
};

/// Sends a file; one of the same name is replaced. A part of it may stay there when the outcome is Unknown, or a no
/// that came after the first bytes.
std::unique_ptr<Call> storeFile(const FtpServer& server, const QString& from, const FtpFile& file,
                                const Terms& terms = {});
/// Fetches a file to a path of this machine, where nothing may stand yet, for its owner alone. What did not come whole
/// is removed.
std::unique_ptr<Call> retrieveFile(const FtpServer& server, const FtpFile& file, const QString& to,
                                   const Terms& terms = {});
/// Removes a file. One that is not there counts as removed: the answer to an earlier order may have been lost.
std::unique_ptr<Call> removeFile(const FtpServer& server, const FtpFile& file, const Terms& terms = {});
/// Whether files can be kept there: logs in, stores a few bytes under this name and removes them. Of a server that
/// shows a certificate nobody vouches for, `certificate` of the result tells which; it gets no name and no password.
std::unique_ptr<Call> tryServer(const FtpServer& server, const QString& name, const Terms& terms = {});

/// Why a call was not accepted, in a sentence or two for the operator, with the server's own words. Never with name or
/// password.
QString wordsOf(const Result& result, const FtpServer& server, const Terms& terms = {});

}  // namespace jxc::net

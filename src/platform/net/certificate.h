// 证书: what an operator compares and what a station remembers of a server's certificate.
#pragma once

#include "platform/net/call.h"

#include <QByteArray>

namespace jxc::net {

/// Fingerprint and pin of a certificate in its text form (PEM); empty ones where it is none.
Certificate readCertificate(const QByteArray& pem);

}  // namespace jxc::net

// libpq 句柄: the handles of the C interface as owners.
#pragma once

#include <libpq-fe.h>
#include <memory>

namespace jxc::postgres {

struct FinishConnection {
  void operator()(PGconn* connection) const { PQfinish(connection); }
};
struct ClearResult {
  void operator()(PGresult* result) const { PQclear(result); }
};
struct FreeCancel {
  void operator()(PGcancel* cancel) const { PQfreeCancel(cancel); }
};

using ConnectionHandle = std::unique_ptr<PGconn, FinishConnection>;
using ResultHandle = std::unique_ptr<PGresult, ClearResult>;
using CancelHandle = std::unique_ptr<PGcancel, FreeCancel>;

}  // namespace jxc::postgres

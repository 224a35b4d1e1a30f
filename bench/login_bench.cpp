// What a login waits for besides its statements: the hash of a password, slow on purpose.
#include "core/password_hash.h"

#include <benchmark/benchmark.h>

namespace jxc {
namespace login_bench {

void password(benchmark::State& state) {
  const QString hash = passwordHash(u"a-b 密码");
  bool isRight = true;
  for (auto _ : state)
    isRight = isRight && isPasswordOf(hash, u"a-b 密码");
  if (!isRight) state.SkipWithError("not its password");
}

BENCHMARK(password)->Name("a password checked at login, statements")->Unit(benchmark::kMillisecond);

}  // namespace login_bench
}  // namespace jxc

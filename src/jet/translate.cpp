#include "jet/binder.h"
#include "jet/emit_postgres.h"
#include "jet/emit_sqlite.h"
#include "jet/parser.h"
#include "jet/plan.h"

namespace jxc::jet {

Plan translate(std::string_view statement, const Catalogue& catalogue, Engine engine) {
  Tree tree;
  Parser(statement, tree).parse();
  Binder(tree, catalogue).bind();
  if (engine == Engine::Postgres) return PostgresEmitter(tree.statement).emit();
  return SqliteEmitter(tree.statement).emit();
}

}  // namespace jxc::jet

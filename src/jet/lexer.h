// 词法: a statement's text cut into words, names, literals and signs, each with its byte position.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::jet {

enum class TokenKind : std::uint8_t { Word, QuotedName, Number, Text, Date, Parameter, Sign, End };

/// The words that may stand for more than a name. A word that is none of them is `None`.
enum class Word : std::uint8_t {
  None,
  Add,
  All,
  Alter,
  And,
  As,
  Asc,
  Between,
  By,
  Cascade,
  Column,
  Constraint,
  Create,
  Delete,
  Desc,
  Distinct,
  DistinctRow,
  Drop,
  Exists,
  False,
  From,
  Group,
  Having,
  In,
  Index,
  Inner,
  Insert,
  Into,
  Is,
  Join,
  Key,
  Left,
  Like,
  Mod,
  Not,
  Null,
  On,
  Or,
  Order,
  Outer,
  Primary,
  Right,
  Select,
  Set,
  Table,
  Top,
  True,
  Union,
  Unique,
  Update,
  Values,
  Where,
  Without
};

/// Signs of one character are themselves; those of two have a letter.
namespace sign {
constexpr char kLessEqual = 'l', kGreaterEqual = 'g', kNotEqual = 'n';
}

struct Token {
  TokenKind kind = TokenKind::End;
  Word word = Word::None;
  char sign = 0;
  int position = 0;
  int end = 0;            // behind the last byte
  std::string_view text;  // a name without its brackets, a literal between its quotes (doubled quotes still doubled)
};

/// Cuts `statement`; the last token is End. Throws TranslateError(Syntax) at a character that begins nothing.
std::vector<Token> tokenize(std::string_view statement);

/// Letters compared without regard to case; other characters as they are.
bool sameName(std::string_view a, std::string_view b);

}  // namespace jxc::jet

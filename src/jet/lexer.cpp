#include "jet/lexer.h"

#include "jet/plan.h"

#include <algorithm>
#include <iterator>

namespace jxc::jet {

namespace lexer_detail {

struct WordEntry {
  std::string_view text;
  Word word;
};

// Sorted by text for the binary search.
constexpr WordEntry kWords[] = {
    {"add", Word::Add},
    {"all", Word::All},
    {"alter", Word::Alter},
    {"and", Word::And},
    {"as", Word::As},
    {"asc", Word::Asc},
    {"between", Word::Between},
    {"by", Word::By},
    {"cascade", Word::Cascade},
    {"column", Word::Column},
    {"constraint", Word::Constraint},
    {"create", Word::Create},
    {"delete", Word::Delete},
    {"desc", Word::Desc},
    {"distinct", Word::Distinct},
    {"distinctrow", Word::DistinctRow},
    {"drop", Word::Drop},
    {"exists", Word::Exists},
    {"false", Word::False},
    {"from", Word::From},
    {"group", Word::Group},
    {"having", Word::Having},
    {"in", Word::In},
    {"index", Word::Index},
    {"inner", Word::Inner},
    {"insert", Word::Insert},
    {"into", Word::Into},
    {"is", Word::Is},
    {"join", Word::Join},
    {"key", Word::Key},
    {"left", Word::Left},
    {"like", Word::Like},
    {"mod", Word::Mod},
    {"not", Word::Not},
    {"null", Word::Null},
    {"on", Word::On},
    {"or", Word::Or},
    {"order", Word::Order},
    {"outer", Word::Outer},
    {"primary", Word::Primary},
    {"right", Word::Right},
    {"select", Word::Select},
    {"set", Word::Set},
    {"table", Word::Table},
    {"top", Word::Top},
    {"true", Word::True},
    {"union", Word::Union},
    {"unique", Word::Unique},
    {"update", Word::Update},
    {"values", Word::Values},
    {"where", Word::Where},
    {"without", Word::Without},
};

constexpr char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}
constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
// Bytes beyond ASCII are letters: tables and aliases may have Chinese names.
constexpr bool beginsName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
constexpr bool continuesName(char c) {
  return beginsName(c) || isDigit(c);
}
constexpr bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

Word wordOf(std::string_view text) {
  if (text.size() < 2 || text.size() > 11) return Word::None;
  char buffer[11];
  for (std::size_t i = 0; i < text.size(); ++i)
    buffer[i] = lower(text[i]);
  const std::string_view key(buffer, text.size());
  const auto found = std::lower_bound(std::begin(kWords), std::end(kWords), key,
                                      [](const WordEntry& entry, std::string_view k) { return entry.text < k; });
  return found != std::end(kWords) && found->text == key ? found->word : Word::None;
}

class Lexer {
 public:
  explicit Lexer(std::string_view text) : text_(text) {}

  std::vector<Token> run() {
    std::vector<Token> tokens;
    tokens.reserve(text_.size() / 4 + 8);
    for (;;) {
      while (at_ < text_.size() && isBlank(text_[at_]))
        ++at_;
      tokens.push_back(next());
      if (tokens.back().kind == TokenKind::End) return tokens;
    }
  }

 private:
  Token next() {
    Token token;
    const std::size_t begin = at_;
    token.position = static_cast<int>(begin);
    if (begin >= text_.size()) {
      token.end = token.position;
      return token;
    }
    const char c = text_[begin];
    if (beginsName(c)) {
      while (at_ < text_.size() && continuesName(text_[at_]))
        ++at_;
      token.kind = TokenKind::Word;
      token.text = text_.substr(begin, at_ - begin);
      token.word = wordOf(token.text);
    } else if (isDigit(c) || (c == '.' && begin + 1 < text_.size() && isDigit(text_[begin + 1]))) {
      number(token);
    } else if (c == '\'' || c == '"') {
      literal(token, c, TokenKind::Text, "a text literal is not closed");
    } else if (c == '[') {
      literal(token, ']', TokenKind::QuotedName, "a bracketed name is not closed");
      if (token.text.empty()) throw TranslateError(TranslateError::Kind::Syntax, "an empty name", token.position);
    } else if (c == '#') {
      literal(token, '#', TokenKind::Date, "a date literal is not closed");
    } else if (c == '?') {
      token.kind = TokenKind::Parameter;
      ++at_;
    } else {
      signToken(token, c);
    }
    token.end = static_cast<int>(at_);
    return token;
  }

  void number(Token& token) {
    const std::size_t begin = at_;
    while (at_ < text_.size() && isDigit(text_[at_]))
      ++at_;
    if (at_ < text_.size() && text_[at_] == '.') {
      ++at_;
      while (at_ < text_.size() && isDigit(text_[at_]))
        ++at_;
    }
    if (at_ < text_.size() && lower(text_[at_]) == 'e') {
      std::size_t exponent = at_ + 1;
      if (exponent < text_.size() && (text_[exponent] == '+' || text_[exponent] == '-')) ++exponent;
      if (exponent < text_.size() && isDigit(text_[exponent])) {
        at_ = exponent;
        while (at_ < text_.size() && isDigit(text_[at_]))
          ++at_;
      }
    }
    if (at_ < text_.size() && continuesName(text_[at_])) {
      throw TranslateError(TranslateError::Kind::Syntax, "a number runs into a name", static_cast<int>(begin));
    }
    token.kind = TokenKind::Number;
    token.text = text_.substr(begin, at_ - begin);
  }

  // From the opening sign to `close`; a doubled close inside stands for itself.
  void literal(Token& token, char close, TokenKind kind, const char* unclosed) {
    const std::size_t begin = ++at_;
    for (;;) {
      const std::size_t end = text_.find(close, at_);
      if (end == std::string_view::npos) throw TranslateError(TranslateError::Kind::Syntax, unclosed, token.position);
      at_ = end + 1;
      if (kind == TokenKind::Text && at_ < text_.size() && text_[at_] == close) {
        ++at_;
        continue;
      }
      const std::size_t zero = text_.substr(begin, end - begin).find('\0');
      if (zero != std::string_view::npos) {
        throw TranslateError(TranslateError::Kind::Syntax, "a zero byte inside a literal",
                             static_cast<int>(begin + zero));
      }
      token.kind = kind;
      token.sign = close;
      token.text = text_.substr(begin, end - begin);
      return;
    }
  }

  void signToken(Token& token, char c) {
    token.kind = TokenKind::Sign;
    token.sign = c;
    ++at_;
    const char following = at_ < text_.size() ? text_[at_] : '\0';
    if (c == '<' && following == '=') token.sign = sign::kLessEqual;
    if (c == '>' && following == '=') token.sign = sign::kGreaterEqual;
    if ((c == '<' && following == '>') || (c == '!' && following == '=')) token.sign = sign::kNotEqual;
    if (token.sign != c) {
      ++at_;
      return;
    }
    if (std::string_view("()*,.;=<>+-/&\\^").find(c) == std::string_view::npos) {
      throw TranslateError(TranslateError::Kind::Syntax, std::string("the sign '") + c + "' means nothing here",
                           token.position);
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

}  // namespace lexer_detail

std::vector<Token> tokenize(std::string_view statement) {
  return lexer_detail::Lexer(statement).run();
}

bool sameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (lexer_detail::lower(a[i]) != lexer_detail::lower(b[i])) return false;
  }
  return true;
}

}  // namespace jxc::jet

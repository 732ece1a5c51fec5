#pragma once

// Helpers for the tests of the definition language: token lists written as compact
// text, so that data tables can state whole lists in one column.

#include "sf/parser/Token.h"

#include <QString>

namespace testsupport {

// The tokens of a definition text as Interpreter::tokenize makes them (End included).
sf::parser::TokenList tokensOf(const QString& text);

// Writes a token list as "payload payload ...", separated by single spaces, with the
// kind marked where it is not the recognised kind of the payload: a Dependent as @Name,
// a NegDependent as ~Name, a String as s:text, numbers and logical operators as their
// payload (also -5 and <=), and any other token whose kind differs from what its payload
// is recognised as as Kind:payload. The End token is written as $.
QString renderTokens(const sf::parser::TokenList& tokens);

} // namespace testsupport

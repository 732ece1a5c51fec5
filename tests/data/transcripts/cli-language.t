kxsetup-cli tokens and calc: the definition language and its calculator from the outside.

  $ kxsetup-cli tokens "num, a < = b, \"x, y\""
  String	num
  Separator	,
  Dependent	a
  LogicalOperator	<=
  Dependent	b
  Separator	,
  String	"x, y"
  End	
  $ kxsetup-cli tokens --json "x, Cell[3]`10h"
  {"tokens":[{"name":"String","payload":"x","type":1},{"name":"Separator","payload":",","type":14},{"name":"Dependent","payload":"Cell[3]","type":4},{"name":"Range","payload":"`","type":15},{"name":"Hexadecimal","payload":"10h","type":3},{"name":"End","payload":"","type":19}]}
  $ kxsetup-cli tokens
  ! kxsetup-cli: tokens needs the definition text
  ! usage: kxsetup-cli [-C DIR] tokens 'DEFINITION' [--json]
  [1]
  $ kxsetup-cli tokens ""
  ! kxsetup-cli: tokens: cannot tokenize an empty definition
  [2]

Powers are left-associative; results print as the shortest text that reads back exactly:
  $ kxsetup-cli calc "2 ^ 3 ^ 2"
  64
  $ kxsetup-cli calc "1000 * 10 / 256"
  39.0625
  $ kxsetup-cli calc "0.1 + 0.2"
  0.30000000000000004
  $ kxsetup-cli calc "1 / 3"
  0.3333333333333333
  $ kxsetup-cli calc "0.1 + 0.2 == 0.3"
  1
  $ kxsetup-cli calc "1000000 * 1000"
  1000000000
  $ kxsetup-cli calc "-(2 + 3) / 2"
  -2.5
  $ kxsetup-cli calc "1 / 0"
  inf

Scale chains both ways:
  $ kxsetup-cli calc --forward 1000 *10/256
  39.0625
  $ kxsetup-cli calc --backward 39.0625 *10/256
  1000
  $ kxsetup-cli calc --backward 39.0625 [*10/256]
  1000
  $ kxsetup-cli calc --forward=5 -40
  -35
  $ kxsetup-cli calc --forward -2 *-3
  6

Failures:
  $ kxsetup-cli calc "1 +"
  ! kxsetup-cli: calc: cannot evaluate the expression "1 +"
  [2]
  $ kxsetup-cli calc "Speed * 2"
  ! kxsetup-cli: calc: cannot evaluate the expression "Speed * 2" (it names Speed, which only a loaded layout can resolve)
  [2]
  $ kxsetup-cli calc --forward 1000 *10/
  ! kxsetup-cli: calc: cannot evaluate the scale chain "*10/"
  [2]
  $ kxsetup-cli calc
  ! kxsetup-cli: calc needs an expression
  ! usage: kxsetup-cli [-C DIR] calc 'EXPRESSION' | calc --forward|--backward VALUE 'CHAIN'
  [1]
  $ kxsetup-cli calc 1 2
  ! kxsetup-cli: calc takes one expression (quote it)
  ! usage: kxsetup-cli [-C DIR] calc 'EXPRESSION' | calc --forward|--backward VALUE 'CHAIN'
  [1]
  $ kxsetup-cli calc ""
  ! kxsetup-cli: the expression is empty
  ! usage: kxsetup-cli [-C DIR] calc 'EXPRESSION' | calc --forward|--backward VALUE 'CHAIN'
  [1]
  $ kxsetup-cli calc --forward ten *2
  ! kxsetup-cli: "ten" is not a number
  ! usage: kxsetup-cli [-C DIR] calc 'EXPRESSION' | calc --forward|--backward VALUE 'CHAIN'
  [1]
  $ kxsetup-cli calc *2 --backward
  ! kxsetup-cli: option --backward needs a value
  ! usage: kxsetup-cli [-C DIR] calc 'EXPRESSION' | calc --forward|--backward VALUE 'CHAIN'
  [1]
  $ kxsetup-cli calc --forward 1 --backward 1 *2
  ! kxsetup-cli: give --forward or --backward, not both
  ! usage: kxsetup-cli [-C DIR] calc 'EXPRESSION' | calc --forward|--backward VALUE 'CHAIN'
  [1]

Precedence, grouping and the failures of malformed expressions:
  $ kxsetup-cli calc "2 ^ 3 ^ 2"
  64
  $ kxsetup-cli calc "2 + 3 * 4"
  14
  $ kxsetup-cli calc "(2 + 3) * 4"
  20
  $ kxsetup-cli calc "10 - 4 - 3"
  3
  $ kxsetup-cli calc "-(2 + 3)"
  -5
  $ kxsetup-cli calc "4 * -(1 + 1) ^ 2"
  16
  $ kxsetup-cli calc "-2 ^ 2"
  4
  $ kxsetup-cli calc "0x10 + 1"
  17
  $ kxsetup-cli calc "-0x10 + 1"
  -15
  $ kxsetup-cli calc "2 * -10h"
  -32
  $ kxsetup-cli calc "1 + 2 > 2"
  1
  $ kxsetup-cli calc "3 > 2 == 1"
  1
  $ kxsetup-cli calc "1 || 0 && 0"
  0
  $ kxsetup-cli calc "1 < 2 && 3 < 2"
  0
  $ kxsetup-cli calc "()"
  ! kxsetup-cli: calc: cannot evaluate the expression "()"
  [2]
  $ kxsetup-cli calc "1 +"
  ! kxsetup-cli: calc: cannot evaluate the expression "1 +"
  [2]
  $ kxsetup-cli calc "+ 1"
  ! kxsetup-cli: calc: cannot evaluate the expression "+ 1"
  [2]
  $ kxsetup-cli calc "1 2"
  ! kxsetup-cli: calc: cannot evaluate the expression "1 2"
  [2]
  $ kxsetup-cli calc "(1 + 2"
  ! kxsetup-cli: calc: cannot evaluate the expression "(1 + 2"
  [2]
  $ kxsetup-cli calc "1 + 2)"
  ! kxsetup-cli: calc: cannot evaluate the expression "1 + 2)"
  [2]
  $ kxsetup-cli calc "2 (3)"
  ! kxsetup-cli: calc: cannot evaluate the expression "2 (3)"
  [2]
  $ kxsetup-cli calc "1 + Speed"
  ! kxsetup-cli: calc: cannot evaluate the expression "1 + Speed" (it names Speed, which only a loaded layout can resolve)
  [2]
  $ kxsetup-cli calc "1 + -Speed"
  ! kxsetup-cli: calc: cannot evaluate the expression "1 + -Speed" (it names Speed, which only a loaded layout can resolve)
  [2]
  $ kxsetup-cli calc "\"a\" + 1"
  ! kxsetup-cli: calc: cannot evaluate the expression ""a" + 1" (it names "a", which only a loaded layout can resolve)
  [2]
  $ kxsetup-cli calc "1 , 2"
  ! kxsetup-cli: calc: cannot evaluate the expression "1 , 2"
  [2]
  $ kxsetup-cli calc "1 ? 2 : 3"
  ! kxsetup-cli: calc: cannot evaluate the expression "1 ? 2 : 3"
  [2]
  $ kxsetup-cli calc "1 & 2"
  ! kxsetup-cli: calc: cannot evaluate the expression "1 & 2"
  [2]
  $ kxsetup-cli calc "(1 +) * 2"
  ! kxsetup-cli: calc: cannot evaluate the expression "(1 +) * 2"
  [2]
  $ kxsetup-cli calc "2 * (1 2)"
  ! kxsetup-cli: calc: cannot evaluate the expression "2 * (1 2)"
  [2]

Scale chains: backwards undoes the last step first ((8 / 2) - 1, not (8 - 1) / 2):
  $ kxsetup-cli calc --forward 1000 "*10/256"
  39.0625
  $ kxsetup-cli calc --forward 3 "+1*2"
  8
  $ kxsetup-cli calc --backward 8 "+1*2"
  3
  $ kxsetup-cli calc --forward 5 "-40"
  -35
  $ kxsetup-cli calc --backward 9 "^2"
  3
  $ kxsetup-cli calc --forward 7 "*(2+3)"
  35
  $ kxsetup-cli calc --forward 5 ">3"
  1
  $ kxsetup-cli calc --backward 5 ">3"
  0
  $ kxsetup-cli calc --forward 1000 "*10/"
  ! kxsetup-cli: calc: cannot evaluate the scale chain "*10/"
  [2]
  $ kxsetup-cli calc --forward 1 "10*"
  ! kxsetup-cli: calc: cannot evaluate the scale chain "10*"
  [2]
  $ kxsetup-cli calc --forward 1 "*10 5"
  ! kxsetup-cli: calc: cannot evaluate the scale chain "*10 5"
  [2]
  $ kxsetup-cli calc --forward 1 "*Speed"
  ! kxsetup-cli: calc: cannot evaluate the scale chain "*Speed" (it names Speed, which only a loaded layout can resolve)
  [2]
  $ kxsetup-cli calc --forward 1 "(*10)"
  ! kxsetup-cli: calc: cannot evaluate the scale chain "(*10)"
  [2]
  $ kxsetup-cli calc --forward 1 "&2"
  ! kxsetup-cli: calc: cannot evaluate the scale chain "&2"
  [2]

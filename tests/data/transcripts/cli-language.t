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

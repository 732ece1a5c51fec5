#include "sf/BitLabels.h"

namespace sf {

bool BitLabelParser::parse(const parser::TokenList&, int, int, QList<BitLabel>*, const Reporter&) {
    return false;
}
bool BitLabelParser::parseOption(const parser::TokenList&, int, int, BitLabel*) {
    return false;
}

} // namespace sf

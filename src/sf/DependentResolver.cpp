#include "sf/DependentResolver.h"

namespace sf {

DependentResolver::DependentResolver(Lookup lookup) : m_lookup(std::move(lookup)) {}

bool DependentResolver::replace(Setting*, parser::TokenList&, parser::TokenType,
                                ReplaceBehaviour) const {
    return false;
}
bool DependentResolver::splitReference(const QString&, QString*, int*) {
    return false;
}
bool DependentResolver::referenceValue(Setting*, int, double*) {
    return false;
}

} // namespace sf

#include "sf/CategoryIndex.h"

#include "sf/Setting.h"

namespace sf {

CategoryIndex::CategoryIndex(int size, int forcedSubIndex, CategoryIndex* previous,
                             CategoryIndex* next, Setting* content)
    : m_size(size < 1 ? 1 : size), m_forcedSubIndex(forcedSubIndex < -1 ? -1 : forcedSubIndex),
      m_previous(previous), m_next(next), m_content(content) {
    if (m_content)
        m_content->addReference();
}

CategoryIndex::~CategoryIndex() {
    if (m_content) {
        Setting* content = m_content;
        m_content = nullptr;
        content->dereference();
        if (content->getReferenceCount() < 1)
            delete content;
    }
    if (m_left)
        m_left->m_right = m_right;
    if (m_right)
        m_right->m_left = m_left;
    m_left = m_right = nullptr;
    if (m_previous && m_previous->m_next == this)
        m_previous->m_next = nullptr;
    m_previous = nullptr;

    // Destroy the chain below one cell at a time: each cell is cut loose before it is
    // deleted, so no destructor walks further and long columns cannot exhaust the stack.
    CategoryIndex* below = m_next;
    m_next = nullptr;
    while (below) {
        CategoryIndex* following = below->m_next;
        below->m_next = nullptr;
        below->m_previous = nullptr;
        if (following)
            following->m_previous = nullptr;
        delete below;
        below = following;
    }
}

int CategoryIndex::getVirtualOffset() const {
    int offset = 0;
    for (const CategoryIndex* cell = m_previous; cell; cell = cell->m_previous)
        offset += cell->m_size;
    return offset;
}

} // namespace sf

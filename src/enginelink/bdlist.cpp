// SPDX-License-Identifier: LGPL-2.1-or-later
#include "enginelink/bdlist.h"

namespace engine {

BdList* BdList::forCaller(const std::vector<const char*>& names)
{
    auto* list = new BdList(names);
    list->m_isCallers = true;
    return list;
}

BdList::BdList(const std::vector<const char*>& names)
{
    m_items.reserve(names.size());
    for (const char* name : names)
        m_items.emplace_back(name);
}

void BdList::release()
{
    if (m_isCallers)
        delete this;
}

std::uint32_t BdList::count()
{
    return static_cast<std::uint32_t>(m_items.size());
}

AVBased::IBDListItem* BdList::item(std::uint32_t index)
{
    return index < m_items.size() ? &m_items[index] : nullptr;
}

} // namespace engine

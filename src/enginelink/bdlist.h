// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspavbased/ibdlist.h"

#include <vector>

namespace engine {

/// A list of names that belong to somebody who lives longer.
class BdList final : public AVBased::IBDList
{
public:
    /// A list that deletes itself when it is released.
    static BdList* forCaller(const std::vector<const char*>& names);

    /// A list inside a record. Releasing it does nothing.
    explicit BdList(const std::vector<const char*>& names);
    ~BdList() = default;

    void release() override;
    std::uint32_t count() override;
    AVBased::IBDListItem* item(std::uint32_t index) override;

private:
    class Item final : public AVBased::IBDListItem
    {
    public:
        explicit Item(const char* name)
            : m_name(name)
        {}

        const char* name() override { return m_name; }

    private:
        const char* m_name;
    };

    std::vector<Item> m_items;
    bool m_isCallers = false;
};

} // namespace engine

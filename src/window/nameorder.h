// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <vector>

class LibraryRow;

/// The rows of the list by name. It is kept while they come and go, since comparing the names of
/// all when a person asks for their order would be felt.
class NameOrder
{
public:
    /// The rows outlive their place here.
    void add(std::vector<LibraryRow*> rows);
    void remove(const std::vector<LibraryRow*>& rows);

    /// Gives each row its rank; the same name, the same rank.
    void rank();

private:
    std::vector<LibraryRow*> m_rows;
    bool m_isRanked = true;
};

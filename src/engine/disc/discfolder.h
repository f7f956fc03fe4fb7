// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "disc/discfiles.h"

namespace engine {

/// A disc in a folder. Its root may be any folder, as that which holds a DVD's tables.
class DiscFolder final : public DiscFiles
{
public:
    explicit DiscFolder(const std::string& root);

    std::string volumeName() const override { return {}; }
    bool hasFolder(const std::string& path) const override;
    ByteSourcePtr openFile(const std::string& path) const override;

protected:
    std::vector<Entry> entries(const std::string& folder) const override;

private:
    std::string absolute(const std::string& path) const { return m_root + "/" + path; }

    std::string m_root;
};

} // namespace engine

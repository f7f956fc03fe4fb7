// SPDX-License-Identifier: GPL-2.0-or-later
#include "checkedimport.h"

#include "cimportcontext.h"

#include <QtCore/QDir>

#include <algorithm>
#include <map>

using Vesk::CImportContext;

namespace {

/// Another process may take a picture of the same name while one is imported again.
const int mostRounds = 3;

} // namespace

CheckedImport::CheckedImport(ImportSession::Receiver receiver)
    : m_receiver(std::move(receiver))
    , m_session([this](const ImportEvent& event) { receive(event); })
    , m_repeated([this](const ImportEvent& event) { receiveAgain(event); })
{}

CheckedImport::~CheckedImport() = default;

bool CheckedImport::start(const ImportRequest& request)
{
    m_request = request;
    m_round = 0;
    m_stopped = false;
    m_folder = CImportContext::instance()->configDir();
    if (request.takesPictures() && !m_index && QDir(m_folder).exists()) {
        m_index = std::make_unique<PictureIndex>(m_folder);
        m_lock = std::make_unique<NameLock>(PictureIndex::clockFile(m_folder));
        m_clock = std::make_unique<FileClock>(PictureIndex::clockFile(m_folder));
    }
    if (m_index) {
        m_request.beforePictures = [this](const QString& path, const QString& name) {
            beforePictures(path, name, m_folder);
        };
        m_request.afterPictures = [this](ImportEvent& ready) { afterPictures(ready); };
    }
    return m_session.start(m_request);
}

void CheckedImport::stop()
{
    m_stopped = true;
    m_session.stop();
    m_repeated.stop();
}

void CheckedImport::receive(const ImportEvent& event)
{
    if (event.kind == ImportEvent::Finished)
        next();
    else if (event.kind != ImportEvent::Ready || isOwn(event))
        m_receiver(event);
}

void CheckedImport::next()
{
    CImportContext::instance()->setConfigDir(m_folder);
    const bool mayRepeat = m_round++ < mostRounds && !m_stopped;
    if (mayRepeat && !m_again.empty() && importAgain())
        return;
    giveUp(m_again);
    m_receiver({ImportEvent::Finished});
}

/// What other processes might mistake for theirs goes where nobody else's is.
void CheckedImport::beforePictures(const QString& path, const QString& name, const QString& folder)
{
    const bool isAlone = m_lock->take(name, [this] { return m_stopped.load(); });
    const bool mayShare = isAlone && m_index->isShared() && !folder.isEmpty();
    CImportContext::instance()->setConfigDir(mayShare ? folder : m_index->folderOf(path));
    m_picturesSince = m_clock->now();
}

void CheckedImport::afterPictures(ImportEvent& ready)
{
    ready.pictures = m_index->check(*ready.item, m_picturesSince);
    if (ready.pictures == PictureIndex::Anothers)
        m_index->removeOutdated(*ready.item);
    m_lock->release();
}

bool CheckedImport::isOwn(const ImportEvent& ready)
{
    if (ready.pictures == PictureIndex::Own)
        return true;
    const bool mayShare = ready.pictures == PictureIndex::Unknown;
    m_again.push_back({ready, mayShare ? m_folder : QString()});
    return false;
}

/// One import for all of them: the folder is changed between two items.
bool CheckedImport::importAgain()
{
    m_left = std::move(m_again);
    m_again.clear();
    ImportRequest request = m_request;
    request.sources.clear();
    std::map<QString, QString> folders;
    for (const Again& again : m_left) {
        request.sources.append(again.ready.item->sourcePath());
        folders[again.ready.item->path] = again.folder;
    }
    request.beforePictures = [this, folders](const QString& path, const QString& name) {
        const auto folder = folders.find(path);
        beforePictures(path, name, folder == folders.end() ? QString() : folder->second);
    };
    const bool isStarted = m_repeated.start(request);
    if (!isStarted)
        giveUp(m_left);
    return isStarted;
}

void CheckedImport::receiveAgain(const ImportEvent& event)
{
    if (event.kind == ImportEvent::Finished) {
        giveUp(m_left);
        next();
    }
    if (event.kind != ImportEvent::Ready)
        return;
    const auto first = std::find_if(m_left.begin(), m_left.end(), [&event](const Again& again) {
        return again.ready.item->path == event.item->path;
    });
    if (first == m_left.end())
        return;
    ImportEvent ready = event;
    ready.value = first->ready.value;
    m_left.erase(first);
    if (isOwn(ready))
        m_receiver(ready);
}

/// Better no picture than another's.
void CheckedImport::giveUp(std::vector<Again>& those)
{
    for (Again& again : those) {
        again.ready.item->dropPictures();
        again.ready.pictureCount = 0;
        m_receiver(again.ready);
    }
    those.clear();
}

// SPDX-License-Identifier: GPL-2.0-or-later
#include "item.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace facts {

namespace {

/// Calls `use` with each picture of `item`, chapters' files as pictures without URL.
template <typename ItemType, typename Use>
void forEachPicture(ItemType& item, Use use)
{
    use(item.movie.picture.file, item.movie.picture.url);
    QString none;
    for (auto& title : item.dvd.titles) {
        use(title.movie.picture.file, title.movie.picture.url);
        for (auto& chapter : title.chapters)
            use(chapter.pictureFile, none);
    }
    for (auto& file : item.bluray.files) {
        for (auto& clip : file.clips)
            use(clip.file, clip.url);
    }
}

/// The longest of `titles`; null without any.
template <typename Title, typename Duration>
const Title* longest(const std::vector<Title>& titles, Duration durationOf)
{
    const Title* found = nullptr;
    for (const Title& title : titles) {
        if (!found || durationOf(*found) < durationOf(title))
            found = &title;
    }
    return found;
}

} // namespace

const Stream* Movie::first(StreamKind kind) const
{
    const auto found = std::find_if(streams.begin(), streams.end(),
                                    [kind](const Stream& stream) { return stream.kind == kind; });
    return found == streams.end() ? nullptr : &*found;
}

const DvdTitle* Dvd::mainTitle() const
{
    const auto main = std::find_if(titles.begin(), titles.end(),
                                   [](const DvdTitle& title) { return title.isMain; });
    if (main != titles.end())
        return &*main;
    return longest(titles, [](const DvdTitle& title) { return title.movie.duration; });
}

const BlurayTitle* Bluray::mainTitle() const
{
    return longest(titles, [](const BlurayTitle& title) { return title.duration; });
}

const Movie* Bluray::movieOf(const BlurayTitle& title) const
{
    const bool plays = !title.clips.empty() && std::size_t(title.clips.front().file) < files.size();
    return plays ? &files[std::size_t(title.clips.front().file)].movie : nullptr;
}

QString Bluray::pictureFile(ClipPlace place) const
{
    if (place.file < 0 || std::size_t(place.file) >= files.size())
        return QString();
    const std::vector<Picture>& clips = files[std::size_t(place.file)].clips;
    const bool exists = place.clip >= 0 && std::size_t(place.clip) < clips.size();
    return exists ? clips[std::size_t(place.clip)].file : QString();
}

QString Bluray::pictureFile(const BlurayChapter& chapter) const
{
    for (auto clip = chapter.clips.rbegin(); clip != chapter.clips.rend(); ++clip) {
        QString file = pictureFile(*clip);
        if (!file.isEmpty())
            return file;
    }
    return QString();
}

QString Item::sourcePath() const
{
    return path.length() > 1 && path.endsWith(QLatin1Char('/')) ? path.chopped(1) : path;
}

QString Item::name() const
{
    const QString& disc = kind == ItemKind::Dvd ? dvd.name : bluray.name;
    if (isDisc() && !disc.isEmpty())
        return disc;
    return QFileInfo(sourcePath()).fileName();
}

double Item::duration() const
{
    double duration = movie.duration;
    if (kind == ItemKind::Dvd) {
        const DvdTitle* title = dvd.mainTitle();
        duration = title ? title->movie.duration : 0.0;
    } else if (kind == ItemKind::Bluray) {
        const BlurayTitle* title = bluray.mainTitle();
        duration = title ? title->duration : 0.0;
    }
    return std::max(duration, 0.0);
}

int Item::pictureCount() const
{
    std::size_t count = 0;
    if (kind == ItemKind::Video)
        count = 1;
    for (const DvdTitle& title : dvd.titles)
        count += std::max<std::size_t>(title.chapters.size(), 1);
    for (const BlurayFile& file : bluray.files)
        count += file.picturedClips.size();
    return int(count);
}

std::vector<QString> Item::pictureFiles() const
{
    std::vector<QString> files;
    forEachPicture(*this, [&files](const QString& file, const QString&) {
        if (!file.isEmpty())
            files.push_back(file);
    });
    std::sort(files.begin(), files.end());
    files.erase(std::unique(files.begin(), files.end()), files.end());
    return files;
}

void Item::dropPictures()
{
    forEachPicture(*this, [](QString& file, QString& url) {
        file.clear();
        url.clear();
    });
}

} // namespace facts

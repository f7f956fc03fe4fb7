// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluray/bluraydisc.h"

#include "bluray/discname.h"
#include "bluray/navigationfile.h"
#include "bluray/playlist.h"
#include "bluray/streamfile.h"
#include "deadline.h"
#include "disc/discfiles.h"
#include "enginelink/log.h"
#include "files/files.h"
#include "refusal.h"
#include "text.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <numeric>

namespace engine {

namespace {

/// Of all playlists together: the playlists, clips and marks, of which the richest real discs have
/// some ten thousand, and the streams that their clips list.
constexpr std::size_t mostEntries = 100000;
constexpr std::size_t mostListedStreams = 1000000;

/// Files of the disc, and streams of all files together; ten times what the richest discs have.
constexpr std::size_t mostFiles = 20000;
constexpr std::size_t mostStreams = 50000;

/// Reading the navigation of one disc. An optical drive takes a good part of a second to find one
/// of the hundreds of small files that a disc may have.
constexpr std::chrono::minutes discLimit{2};

/// Looking into the stream files of one disc, for what its navigation does not tell.
constexpr std::chrono::seconds streamLimit{8};

const char* const rootFolders[] = {"BDMV", "BDAV"};
const char* const protectionFiles[] = {"AACS/Unit_Key_RO.inf", "AACS/Unit_Key_RW.inf",
                                       "BDSVM/00000.svm"};

/// A stream file that is there or that playlists play, with the earliest and the latest time stamp
/// at which they do.
struct StreamUse
{
    std::string name; ///< of the file; empty when it is not there
    std::uint32_t start = UINT32_MAX;
    std::uint32_t end = 0;
    const PlayItem* item = nullptr; ///< the first that plays it

    void add(const PlayItem& item)
    {
        if (!this->item)
            this->item = &item;
        start = std::min(start, item.in);
        end = std::max(end, item.out);
    }
};

/// Where an item of a playlist lies in its stream file and in its title, in ticks.
class ItemPlace
{
public:
    /// `clip` has no sequences when nothing is known about the file.
    ItemPlace(const PlayItem& item, const ClipInformation& clip, std::int64_t titleStart)
        : m_clip(clip)
        , m_titleStart(titleStart)
    {
        if (clip.sequences.empty())
            return;
        m_sequence = clip.sequenceOf(item.sequence, item.in);
        m_in = clip.positionOf(item.in, m_sequence);
        m_out = clip.positionOf(item.out, m_sequence);
    }

    std::int64_t in() const { return m_in; }
    std::int64_t out() const { return m_out; }
    bool playsNothing() const { return m_in >= m_out; }

    /// Where in the title a time stamp of the stream file is played; the nearest place in the item.
    std::int64_t titleTime(std::uint32_t time) const
    {
        if (playsNothing())
            return m_titleStart;
        return m_titleStart + std::clamp(m_clip.positionOf(time, m_sequence), m_in, m_out) - m_in;
    }

private:
    const ClipInformation& m_clip;
    std::int64_t m_titleStart;
    std::size_t m_sequence = 0;
    std::int64_t m_in = 0;
    std::int64_t m_out = 0;
};

/// The languages of the streams that lie in the item's own file.
void setLanguages(const std::vector<PlayStream>& streams, MovieFacts& movie)
{
    for (const PlayStream& listed : streams) {
        for (StreamFacts& stream : movie.streams) {
            const bool isSame =
                listed.source == PlayStream::ofClip && stream.id == listed.stream.pid;
            if (isSame && !listed.stream.language.empty())
                stream.language = listed.stream.language;
        }
    }
}

class DiscReader
{
public:
    DiscReader(const std::string& path, const DiscFiles& files, const std::string& root)
        : m_path(path)
        , m_files(files)
        , m_root(root)
        , m_deadline(discLimit)
        , m_streamDeadline(streamLimit)
        , m_disc(new BlurayDisc)
    {}

    std::unique_ptr<BlurayDisc> read();

private:
    std::string discName() const;
    std::vector<std::string> listFiles(const char* folder,
                                       std::initializer_list<const char*> suffixes) const;
    std::string streamPath(const std::string& name) const { return m_root + "/STREAM/" + name; }
    void readPlaylists();
    void readPlaylist(const std::string& name);
    void readFiles();
    std::optional<StreamFileDescription> describe(const std::string& name, const StreamUse& use);
    void limitStreams(MovieFacts& movie);
    void completeSound();
    void makeTitle(const std::string& name, const Playlist& playlist);

    std::string m_path;
    const DiscFiles& m_files;
    std::string m_root;
    Deadline m_deadline;
    Deadline m_streamDeadline; ///< for stream files that have to be looked into
    std::unique_ptr<BlurayDisc> m_disc;

    std::map<Playlist, std::string> m_playlists; ///< each once, with its name
    std::size_t m_entriesLeft = mostEntries;
    std::size_t m_listedStreamsLeft = mostListedStreams;
    std::size_t m_streamsLeft = mostStreams;
    std::map<std::string, StreamUse> m_streams;     ///< by clip, as in "00001"
    std::map<std::string, std::size_t> m_fileIndex; ///< by clip, of the files listed
    std::vector<ClipInformation> m_clips;           ///< sequences of each file; none when unknown
};

std::unique_ptr<BlurayDisc> DiscReader::read()
{
    m_disc->streamFolder = (m_path == "/" ? "" : m_path) + "/" + m_root + "/STREAM/";
    m_disc->name = discName();
    for (const char* path : protectionFiles)
        m_disc->isProtected = m_disc->isProtected || m_files.hasFile(path);

    readPlaylists();
    readFiles();
    completeSound();
    for (const auto& [playlist, name] : m_playlists)
        makeTitle(name, playlist);
    std::sort(m_disc->titles.begin(), m_disc->titles.end(),
              [](const DiscTitle& a, const DiscTitle& b) { return a.name < b.name; });
    if (m_deadline.givenUp() || m_streamDeadline.givenUp())
        log(m_path + ": reading the disc took too long, parts of it are left out");
    if (m_disc->files.empty() && m_disc->titles.empty()) {
        noteRefusal(AVBased::RefusedDamaged);
        return nullptr;
    }
    return std::move(m_disc);
}

std::string DiscReader::discName() const
{
    std::string name = nameFromMetadata(m_files);
    if (name.empty())
        name = m_files.volumeName();
    if (!name.empty())
        return name;
    const std::filesystem::path path(m_path);
    const bool isFolder = files().kindOf(m_path) == FileKind::folder;
    return (isFolder ? path.filename() : path.stem()).string();
}

/// The files in a folder below the disc's root folder. Those of cameras have names of eight letters
/// and a suffix of three.
std::vector<std::string> DiscReader::listFiles(const char* folder,
                                               std::initializer_list<const char*> suffixes) const
{
    std::vector<std::string> names;
    for (const char* suffix : suffixes) {
        const auto found = m_files.fileNames(m_root + folder, suffix);
        names.insert(names.end(), found.begin(), found.end());
    }
    return names;
}

void DiscReader::readPlaylists()
{
    std::vector<std::string> names = listFiles("/PLAYLIST", {".mpls", ".mpl"});
    if (names.empty())
        names = listFiles("/BACKUP/PLAYLIST", {".mpls", ".mpl"});
    for (const std::string& name : names) {
        if (m_deadline.expired())
            break;
        readPlaylist(name);
    }
}

void DiscReader::readPlaylist(const std::string& name)
{
    auto playlist = parseNavigationFile(m_files, m_root, "PLAYLIST/" + name, parsePlaylist);
    if (!playlist) {
        log(m_path + ": unreadable playlist " + name);
        return;
    }
    const std::size_t entries = 1 + playlist->items.size() + playlist->marks.size();
    std::size_t streams = 0;
    for (const PlayItem& item : playlist->items)
        streams += item.streams.size();
    if (entries > m_entriesLeft || streams > m_listedStreamsLeft) {
        log(m_path + ": too many clips, without playlist " + name);
        return;
    }
    const auto [kept, isNew] = m_playlists.emplace(std::move(*playlist), name);
    if (!isNew)
        return;
    m_entriesLeft -= entries;
    m_listedStreamsLeft -= streams;
    for (const PlayItem& item : kept->first.items)
        m_streams[item.clip].add(item);
}

/// The files in the folder, and those that playlists name.
void DiscReader::readFiles()
{
    for (const std::string& name : listFiles("/STREAM", {".m2ts", ".mts"}))
        m_streams[name.substr(0, name.rfind('.'))].name = name;
    m_streamDeadline.restart(streamLimit);
    for (const auto& [stream, use] : m_streams) {
        if (m_disc->files.size() >= mostFiles) {
            log(m_path + ": too many stream files");
            break;
        }
        DiscStreamFile file;
        file.name = use.name.empty() ? stream + ".m2ts" : use.name;
        ClipInformation clip;
        if (auto description = describe(file.name, use)) {
            file.movie = std::move(description->movie);
            limitStreams(file.movie);
            clip.sequences = std::move(description->sequences);
        } else {
            log(m_path + ": nothing is known about stream file " + file.name);
        }
        m_fileIndex.emplace(stream, m_disc->files.size());
        m_disc->files.push_back(std::move(file));
        m_clips.push_back(std::move(clip));
    }
}

/// Every file keeps one, which tells how long it is.
void DiscReader::limitStreams(MovieFacts& movie)
{
    const std::size_t most = std::max<std::size_t>(m_streamsLeft, 1);
    if (movie.streams.size() > most) {
        movie.streams.resize(most);
        movie.streams.shrink_to_fit();
    }
    m_streamsLeft -= std::min(m_streamsLeft, movie.streams.size());
}

std::optional<StreamFileDescription> DiscReader::describe(const std::string& name,
                                                          const StreamUse& use)
{
    const std::string path = streamPath(name);
    if (!m_deadline.expired()) {
        if (const auto clip = findClipInformation(m_files, path))
            return describeByClipInformation(*clip);
    }
    if (!m_streamDeadline.expired()) {
        if (auto description = describeByStream(m_files, path)) {
            if (use.item)
                setLanguages(use.item->streams, description->movie);
            return description;
        }
    }
    if (use.start < use.end)
        return describeByTimes(use.start, use.end);
    return std::nullopt;
}

/// Of the largest files, which are those that people import.
void DiscReader::completeSound()
{
    constexpr std::size_t mostFiles = 30;
    std::vector<std::pair<std::uint64_t, DiscStreamFile*>> files; // with their sizes
    for (DiscStreamFile& file : m_disc->files) {
        if (!lacksSound(file.movie) || m_deadline.expired())
            continue;
        if (const ByteSourcePtr bytes = m_files.openFile(streamPath(file.name)))
            files.emplace_back(bytes->size(), &file);
    }
    std::stable_sort(files.begin(), files.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    files.resize(std::min(files.size(), mostFiles));
    for (const auto& [size, file] : files) {
        if (!m_streamDeadline.expired())
            engine::completeSound(m_files, streamPath(file->name), file->movie);
    }
}

/// Items that play nothing are left out: those of files about which nothing is known, and those
/// whose times lie outside of the file or the wrong way round.
void DiscReader::makeTitle(const std::string& name, const Playlist& playlist)
{
    DiscTitle title;
    title.name = name;
    std::vector<ItemPlace> places;
    std::int64_t length = 0;
    const ClipInformation unknown;
    for (const PlayItem& item : playlist.items) {
        const auto file = m_fileIndex.find(item.clip);
        const bool isListed = file != m_fileIndex.end();
        const ItemPlace place(item, isListed ? m_clips[file->second] : unknown, length);
        places.push_back(place);
        if (place.playsNothing())
            continue;
        title.clips.push_back({file->second, place.in(), place.out()});
        length += place.out() - place.in();
    }
    if (title.clips.empty()) {
        log(m_path + ": " + name + " plays nothing");
        return;
    }
    for (const PlayMark& mark : playlist.marks)
        title.chapters.push_back(places[mark.item].titleTime(mark.time));
    std::sort(title.chapters.begin(), title.chapters.end());
    m_disc->titles.push_back(std::move(title));
}

} // namespace

std::int64_t DiscTitle::duration() const
{
    return std::accumulate(
        clips.begin(), clips.end(), std::int64_t{0},
        [](std::int64_t sum, const DiscClip& clip) { return sum + clip.out - clip.in; });
}

std::unique_ptr<BlurayDisc> readBlurayDisc(const std::string& path)
{
    const std::string root = withoutTrailingSeparators(path);
    if (const auto files = DiscFiles::open(root)) {
        for (const char* folder : rootFolders) {
            if (files->hasFolder(folder))
                return DiscReader(root, *files, folder).read();
        }
    }
    noteRefusal(AVBased::RefusedNoDisc);
    return nullptr;
}

} // namespace engine

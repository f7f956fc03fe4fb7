// SPDX-License-Identifier: GPL-2.0-or-later
//
// A media engine that does what a test has scripted and remembers what was asked of it.
//
//   FakeEngine      the script and the memory; one for the process, reset() before each test
//   FakeItem        what the engine finds at a path; FakeDisc what its Blu-ray loader finds there
//   fakeobjects     the objects that the module gets
//
// Objects are never freed before reset(), so that whatever is called after a release() is noticed:
// it is noted in misuses(), as is a second release. Callable from any thread.
#pragma once

#include "vspavbased/bdrecords.h"
#include "vspavbased/dvdrecords.h"
#include "vspavbased/movierecords.h"

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtCore/QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct FakeStream
{
    int kind = AVBased::StreamKindVideo;
    int id = 0;
    double duration = 10.0;
    std::string name;
    std::string codec = "h264";
    std::string language;
    int width = 0;
    int height = 0;
    quint64 frameRate = 0;
    quint32 aspectRatio = 0;
    int sampleRate = 0;
    int channels = 0;
    quint64 channelLayout = 0;
    int bitRate = 0;
};

struct FakeMovie
{
    std::string name;
    int id = 0;
    std::string format = "fake";
    std::vector<FakeStream> streams;
    std::vector<std::pair<std::string, std::string>> tags;
};

struct FakeTitle
{
    double duration = 60.0;
    std::vector<double> chapters = {0.0};
    std::vector<AVBased::DVDAudioInfo> audio;
    std::vector<AVBased::DVDSubpictureInfo> subtitles;
    std::optional<quint32> claimedAudio; ///< another count than there are
};

struct FakeTitleSet
{
    int id = 1;
    std::vector<FakeTitle> titles;
};

struct FakeDvd
{
    std::vector<FakeTitleSet> sets;
    QList<int> mainMovies;
    bool scrambled = false;
};

/// What readFrame() does, one a call; the last one is repeated.
enum class FakeRead
{
    Frame,     ///< a frame
    Nothing,   ///< true without a frame
    LastFrame, ///< false, with the frame once more
    End        ///< false without a frame
};

struct FakeItem
{
    std::vector<FakeMovie> movies;
    bool hasMovieInfoExt = true;
    std::optional<std::string> drm = std::string("0");
    std::optional<FakeDvd> dvd;
    bool hasSource = true;
    std::vector<FakeRead> reads = {FakeRead::Frame};
};

struct FakeClip
{
    std::string file;
    double in = 0.0;
    double out = 0.0;
};

struct FakePlayInfo
{
    std::vector<FakeClip> clips;
    double timeStamp = 0.0;
    double duration = 0.0;
    std::optional<quint32> claimedClips; ///< another count than there are
};

struct FakeBdTitle
{
    std::string name;
    FakePlayInfo play;
    std::vector<FakePlayInfo> chapters;
    bool hasInfo = true;
};

struct FakeDisc
{
    std::string name;
    bool scrambled = false;
    bool hasDisc = true;
    bool hasFiles = true;
    bool hasTitles = true;
    std::vector<std::pair<std::string, FakeMovie>> files;
    std::vector<FakeBdTitle> titles;
};

class FakeObject;

class FakeEngine
{
public:
    static FakeEngine& instance();

    /// Forgets script, memory and objects.
    void reset();

    QHash<QByteArray, FakeItem> items; ///< by the path that the engine is given
    QHash<QByteArray, FakeDisc> discs;
    std::optional<FakeItem> anyTimeline; ///< for paths that end in ".seix"
    bool hasTimeline = true;
    bool hasConverter = true;
    bool hasLoader = true;
    int pictureFormat = 30;
    bool topDown = true;

    /// Runs with each call before it is carried out; may throw, or wait.
    std::function<void(const QString& call)> hook;

    /// Everything that was called, in order: "createImporter /a.mp4", "source.seek 100" …
    QStringList calls() const;
    /// Those calls that begin with `prefix`.
    QStringList calls(const QString& prefix) const;
    void forgetCalls();

    /// Calls of objects that were released before; empty when all is well.
    QStringList misuses() const;
    /// Objects that were handed out and not released.
    QStringList living() const;

    void note(const QString& call);
    void noteMisuse(const QString& call);
    template <typename T, typename... Arguments>
    T* make(Arguments&&... arguments);

private:
    mutable QMutex m_mutex;
    QStringList m_calls;
    QStringList m_misuses;
    std::vector<std::unique_ptr<FakeObject>> m_objects;
};

/// An object that the module may hold.
class FakeObject
{
public:
    explicit FakeObject(const QString& name)
        : m_name(name)
    {}
    virtual ~FakeObject() = default;

    bool isReleased() const { return m_released; }
    QString name() const { return m_name; }

protected:
    void called(const QString& operation);
    void released();

private:
    QString m_name;
    bool m_released = false;
};

template <typename T, typename... Arguments>
T* FakeEngine::make(Arguments&&... arguments)
{
    auto object = std::make_unique<T>(std::forward<Arguments>(arguments)...);
    T* const made = object.get();
    QMutexLocker lock(&m_mutex);
    m_objects.push_back(std::move(object));
    return made;
}

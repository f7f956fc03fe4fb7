// SPDX-License-Identifier: GPL-2.0-or-later
//
// A media engine that does what a test has scripted and remembers what was asked of it.
//
//   FakeEngine      the script and the memory; one for the process, reset() before each test
//   FakeItem        what the engine finds at a path; FakeDisc what its Blu-ray loader finds there
//   fakeobjects     the objects that the module gets
//
// Objects are never freed, so that whatever is called after a release() is noticed: it is noted in
// leftovers(), as is a second release. Callable from any thread.
#pragma once

#include "vspavbased/bdrecords.h"
#include "vspavbased/dvdrecords.h"
#include "vspavbased/movierecords.h"

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QMutex>
#include <QtCore/QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

AVBased::AVStreamInfo fakeStream(int kind = AVBased::StreamKindVideo, int id = 0,
                                 double duration = 10.0);

struct FakeMovie
{
    QByteArray name;
    int id = 0;
    std::vector<AVBased::AVStreamInfo> streams;
    std::vector<AVBased::AVMetaItem> tags;

    /// For as long as the movie stays as it is.
    AVBased::AVMovieInfo record() const;
};

struct FakeTitle
{
    double duration = 60.0;
    std::vector<double> chapters = {0.0};
    AVBased::DVDTitleInfo record{}; ///< sound and subtitles; the rest is put in
};

struct FakeTitleSet
{
    int id = 1;
    std::vector<FakeTitle> titles;
};

struct FakeItem
{
    std::vector<FakeMovie> movies = {};
    std::optional<QByteArray> drm = QByteArray("0");
    /// What readFrame() does, a letter a call, the last one repeated: "f" gives a frame, "n"
    /// nothing and goes on, "l" the last frame and the end, "e" the end.
    QByteArray reads = "f";

    bool isDvd = false;
    std::vector<FakeTitleSet> sets;
    bool scrambled = false;
};

struct FakeClip
{
    QByteArray file;
    double in = 0.0;
    double out = 0.0;
};

struct FakePlayInfo
{
    std::vector<FakeClip> clips;
    double timeStamp = 0.0;
    double duration = 0.0;
    std::optional<quint32> claimedClips = {}; ///< another count than there are
};

struct FakeBdTitle
{
    QByteArray name;
    FakePlayInfo play;
    std::vector<FakePlayInfo> chapters;
};

struct FakeFile
{
    QByteArray name;
    FakeMovie movie;
};

struct FakeDisc
{
    QByteArray name;
    std::vector<FakeFile> files;
    std::vector<FakeBdTitle> titles;
};

/// What a test says.
struct FakeScript
{
    QHash<QByteArray, FakeItem> items; ///< by the path that the engine is given
    QHash<QByteArray, FakeDisc> discs;
    std::optional<FakeItem> anyTimeline; ///< for paths that end in ".seix"
    QStringList failing;                 ///< calls that begin so give null
    int pictureFormat = 30;
    bool topDown = true;

    QString hooked;             ///< before calls that begin so are carried out,
    std::function<void()> hook; ///< this runs, which may throw or wait
};

class FakeObject;

class FakeEngine : public FakeScript
{
public:
    /// Never destroyed: the import context lets go of its converter when the process ends.
    static FakeEngine& instance();

    /// Forgets script and memory.
    void reset();

    /// What was called, in order, as far as it matches: "createImporter /a.mp4",
    /// "source.seek 100" …
    QStringList calls(const QString& pattern = {}) const;
    void forgetCalls();
    /// Objects that were handed out and not released, the context's converter left aside; and calls
    /// of those that were released before.
    QStringList leftovers() const;

    void on(const char* call, const std::function<void()>& action);
    /// Whether it does not fail.
    bool note(const QString& call, bool isMisuse = false);
    void noteRelease(const QString& name);
    /// The object, which belongs to the engine.
    template <typename T>
    T* keep(std::unique_ptr<T> object)
    {
        T* const kept = object.get();
        keepObject(std::move(object));
        return kept;
    }

private:
    void keepObject(std::unique_ptr<FakeObject> object);

    mutable QMutex m_mutex;
    QStringList m_calls;
    QStringList m_leftovers;
    std::vector<std::unique_ptr<FakeObject>> m_objects;
};

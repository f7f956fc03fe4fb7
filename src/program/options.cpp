// SPDX-License-Identifier: GPL-2.0-or-later
#include "options.h"

#include "optiontable.h"
#include "pathlist.h"
#include "session/defaults.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QRegularExpression>

namespace {

/// Largest width and height of a snapshot.
const int largestSide = 16384;

const int mostJobs = 4;

/// The words of `text` in lines, of which all but the first begin with `indentation` blanks.
QString wrapped(const QString& text, int indentation)
{
    const int mostColumns = 79;
    QString lines;
    int column = indentation;
    for (const QString& word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (column == indentation)
            lines += word;
        else if (column + word.length() < mostColumns)
            lines += QLatin1Char(' ') + word;
        else {
            lines += QLatin1Char('\n') + QString(indentation, QLatin1Char(' ')) + word;
            column = indentation;
        }
        column += word.length() + 1;
    }
    return lines + QLatin1Char('\n');
}

void addImportOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(wrapped(QLatin1String(programSummary), 0).trimmed());
    parser.addPositionalArgument(QStringLiteral("PATH"), QStringLiteral("What to import."),
                                 QStringLiteral("PATH..."));
    for (std::size_t i = 0; i < optionCount; ++i) {
        const OptionText& text = optionTable[i];
        QStringList names(QLatin1String(text.name));
        if (text.letter)
            names.prepend(QLatin1String(text.letter));
        parser.addOption({names, QLatin1String(text.help), QLatin1String(text.value)});
    }
}

bool parsePurposes(const QStringList& purposes, Options& options, QString& error)
{
    for (const QString& purpose : purposes) {
        if (purpose == QLatin1String("import"))
            options.forImport = true;
        else if (purpose == QLatin1String("play"))
            options.forPlay = true;
        else if (purpose == QLatin1String("convert"))
            options.forConvert = true;
        else {
            error = QStringLiteral("--for takes import, play or convert, not '%1'").arg(purpose);
            return false;
        }
    }
    if (purposes.isEmpty())
        options.forImport = true;
    return true;
}

bool parseSnapSize(const QString& text, QSize& size, QString& error)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]{1,5})x([0-9]{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const int width = match.captured(1).toInt();
    const int height = match.captured(2).toInt();
    if (!match.hasMatch() || width < 1 || height < 1 || width > largestSide ||
        height > largestSide) {
        error =
            QStringLiteral("--snap-size takes a size such as 320x180, up to %1 a side, not '%2'")
                .arg(QString::number(largestSide), text);
        return false;
    }
    size = QSize(width, height);
    return true;
}

bool parseJobs(const QString& text, int& jobs, QString& error)
{
    jobs = text.toInt();
    if (jobs >= 1 && jobs <= mostJobs)
        return true;
    error = QStringLiteral("--jobs takes a number from 1 to %1, not '%2'").arg(mostJobs).arg(text);
    return false;
}

bool parseShard(const QString& text, Options& options, QString& error)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]{1,6})/([0-9]{1,6})$"));
    const QRegularExpressionMatch match = form.match(text);
    options.shard = match.captured(1).toInt();
    options.shardCount = match.captured(2).toInt();
    if (match.hasMatch() && options.shard >= 1 && options.shard <= options.shardCount)
        return true;
    error = QStringLiteral("--shard takes a part such as 1/8 to 8/8, not '%1'").arg(text);
    return false;
}

/// People write suffixes in many ways: mp4, .mp4, *.mp4, with commas, semicolons, bars or blanks
/// between, in braces, in several options. The module takes "*.mp4;" one after another.
bool parseFormats(const QStringList& values, QString& list, QString& error)
{
    static const QRegularExpression separators(QStringLiteral("[,;|{}()\\s]+"));
    list.clear();
    const QStringList words = values.join(QLatin1Char(';')).split(separators, Qt::SkipEmptyParts);
    for (const QString& word : words) {
        QString suffix = word;
        while (suffix.startsWith(QLatin1Char('*')) || suffix.startsWith(QLatin1Char('.')))
            suffix.remove(0, 1);
        if (suffix.contains(QLatin1Char('*')) || word.endsWith(QLatin1Char('*')))
            error = QStringLiteral("formats are suffixes such as mp4, not '%1'; --all-files tries "
                                   "every file")
                        .arg(word);
        else if (!suffix.isEmpty())
            list += QStringLiteral("*.%1;").arg(suffix);
    }
    return error.isEmpty();
}

/// A media file is not written over: the shell has made two names of one pattern. Nor is one result
/// by another.
bool checkOutputs(const Options& options, QString& error)
{
    QStringList files;
    for (const QString& name :
         {options.jsonFile, options.jsonLinesFile, options.htmlFile, options.reportFile}) {
        const QFileInfo file(name);
        if (!file.isFile() && (file.exists() || name.isEmpty() || name == QLatin1String("-")))
            continue;
        const QString suffix = QStringLiteral("*.%1;").arg(file.suffix().toLower());
        const QString path = QDir::cleanPath(file.absoluteFilePath());
        if (file.isFile() && QString::fromLatin1(defaults::formats).contains(suffix))
            error = QStringLiteral("%1 is a media file, and would be written over").arg(name);
        else if (files.contains(path))
            error = QStringLiteral("%1 cannot have more than one output").arg(name);
        files.append(path);
    }
    return error.isEmpty();
}

/// What is written there comes behind what others write, and nothing else with it.
QString outputName(const QString& value)
{
    return value == QLatin1String("/dev/stdout") ? QStringLiteral("-") : value;
}

bool checkNames(const QCommandLineParser& parser, QString& error)
{
    for (const char* name :
         {"config-dir", "json", "json-lines", "html", "report", "files-from", "files0-from"}) {
        if (!parser.isSet(QLatin1String(name)))
            continue;
        const QString value = parser.value(QLatin1String(name));
        if (value.isEmpty())
            error = QStringLiteral("--%1 needs a name").arg(QLatin1String(name));
        else if (value.contains(QChar(QChar::ReplacementCharacter)))
            error = QStringLiteral("the name for --%1 is no valid text").arg(QLatin1String(name));
    }
    const auto isStandardOutput = [&parser](const char* name) {
        return outputName(parser.value(QLatin1String(name))) == QLatin1String("-");
    };
    if (isStandardOutput("json") + isStandardOutput("json-lines") + isStandardOutput("html") +
            parser.isSet(QStringLiteral("events")) >
        1)
        error = QStringLiteral(
            "only one of --json -, --json-lines -, --html - and --events can have the "
            "standard output");
    return error.isEmpty();
}

bool readNumbers(const QCommandLineParser& parser, Options& options, QString& error)
{
    if (!parsePurposes(parser.values(QStringLiteral("for")), options, error))
        return false;
    const QString snapSize = parser.value(QStringLiteral("snap-size"));
    if (parser.isSet(QStringLiteral("snap-size")) &&
        !parseSnapSize(snapSize, options.snapSize, error))
        return false;
    if (parser.isSet(QStringLiteral("jobs")) &&
        !parseJobs(parser.value(QStringLiteral("jobs")), options.jobs, error))
        return false;
    return !parser.isSet(QStringLiteral("shard")) ||
           parseShard(parser.value(QStringLiteral("shard")), options, error);
}

bool readValues(const QCommandLineParser& parser, Options& options, QString& error)
{
    if (!readNumbers(parser, options, error) || !checkNames(parser, error))
        return false;
    options.configDir = parser.isSet(QStringLiteral("config-dir"))
                            ? parser.value(QStringLiteral("config-dir"))
                            : defaults::pictureFolder();
    options.formats = QString::fromLatin1(defaults::formats);
    if (parser.isSet(QStringLiteral("formats")) &&
        !parseFormats(parser.values(QStringLiteral("formats")), options.formats, error))
        return false;
    if (!parseFormats(parser.values(QStringLiteral("forbid")), options.forbidden, error))
        return false;
    options.allFiles = parser.isSet(QStringLiteral("all-files"));
    options.allowDrm = parser.isSet(QStringLiteral("allow-drm"));
    options.jsonFile = outputName(parser.value(QStringLiteral("json")));
    options.jsonLinesFile = outputName(parser.value(QStringLiteral("json-lines")));
    options.htmlFile = outputName(parser.value(QStringLiteral("html")));
    options.events = parser.isSet(QStringLiteral("events"));
    options.reportFile = parser.value(QStringLiteral("report"));
    options.quiet = parser.isSet(QStringLiteral("quiet"));
    options.verbose = parser.isSet(QStringLiteral("verbose"));
    return checkOutputs(options, error);
}

bool readPaths(const QCommandLineParser& parser, const QHash<QString, QByteArray>& bytes,
               Options& options, QString& error)
{
    for (const QString& path : parser.positionalArguments())
        options.paths.append(bytes.value(path));
    const bool isGiven = !options.paths.isEmpty() || parser.isSet(QStringLiteral("files-from")) ||
                         parser.isSet(QStringLiteral("files0-from"));
    if (!isGiven)
        error = QStringLiteral("no PATH is given; see --help");
    for (const QString& file : parser.values(QStringLiteral("files-from"))) {
        if (!readPathList(file, '\n', options.paths, error))
            return false;
    }
    for (const QString& file : parser.values(QStringLiteral("files0-from"))) {
        if (!readPathList(file, '\0', options.paths, error))
            return false;
    }
    return isGiven;
}

bool parseImport(const QStringList& arguments, const QHash<QString, QByteArray>& bytes,
                 Options& options, QString& error)
{
    QCommandLineParser parser;
    addImportOptions(parser);
    if (!parser.parse(arguments)) {
        error = parser.errorText();
        return false;
    }
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("version"))) {
        options.command = parser.isSet(QStringLiteral("help")) ? Options::Command::Help
                                                               : Options::Command::Version;
        return true;
    }
    return readValues(parser, options, error) && readPaths(parser, bytes, options, error);
}

bool parseReport(const QStringList& arguments, Options& options, QString& error)
{
    QCommandLineParser parser;
    parser.addOptions({{QStringLiteral("json"), QStringLiteral("As JSON.")},
                       {{QStringLiteral("h"), QStringLiteral("help")}, QString()}});
    if (!parser.parse(arguments)) {
        error = parser.errorText();
        return false;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        options.command = Options::Command::Help;
        return true;
    }
    const QStringList files = parser.positionalArguments().mid(1);
    if (files.size() != 1) {
        error = QStringLiteral("report takes one FILE");
        return false;
    }
    options.command = Options::Command::Report;
    options.reportToRead = files.first();
    options.reportAsJson = parser.isSet(QStringLiteral("json"));
    return true;
}

/// The suffixes of `formats`.
QString formatLines(const char* formats)
{
    QString list = QString::fromLatin1(formats).remove(QStringLiteral("*."));
    return QStringLiteral("  ") + wrapped(list.replace(QLatin1Char(';'), QLatin1Char(' ')), 2);
}

} // namespace

bool parseOptions(int argc, char** argv, Options& options, QString& error)
{
    QStringList arguments;
    QHash<QString, QByteArray> bytes; // names that are no valid text keep theirs
    for (int i = 0; i < argc; ++i) {
        const QByteArray raw(argv[i]);
        arguments.append(QFile::decodeName(raw));
        bytes.insert(arguments.last(), raw);
    }
    if (arguments.value(1) == QLatin1String("report"))
        return parseReport(arguments, options, error);
    return parseImport(arguments, bytes, options, error);
}

QString helpText()
{
    QCommandLineParser parser;
    addImportOptions(parser);
    QString text = parser.helpText() + QStringLiteral("\nWithout --formats these are imported:\n") +
                   formatLines(defaults::formats) +
                   QStringLiteral("\nvspimport report FILE [--json]\n"
                                  "  Show a saved error report, one line an error.\n\n"
                                  "Exit status:\n");
    for (std::size_t i = 0; i < exitStatusCount; ++i) {
        text += QStringLiteral("  %1  ").arg(QLatin1String(exitStatusTable[i].status), 3) +
                wrapped(QLatin1String(exitStatusTable[i].meaning), 7);
    }
    return text;
}

// SPDX-License-Identifier: GPL-2.0-or-later
#include "manualpages.h"

#include "../optiontable.h"
#include "session/defaults.h"

#include <QtCore/QJsonArray>
#include <QtCore/QStringList>

namespace {

/// `text` as the formatter of manual pages takes it. A line must not begin with its control
/// characters.
QByteArray troff(const QString& text)
{
    QByteArray escaped = text.toUtf8();
    escaped.replace('\\', "\\e").replace('-', "\\-").replace("'", "\\(aq");
    return escaped.startsWith('.') ? "\\&" + escaped : escaped;
}

QByteArray troff(const char* text)
{
    return troff(QString::fromUtf8(text));
}

QByteArray section(const QByteArray& name)
{
    return ".SH " + name + '\n';
}

/// A term with what it means below.
QByteArray entry(const QByteArray& term, const QByteArray& meaning)
{
    return ".TP\n" + term + '\n' + meaning + '\n';
}

QByteArray head(const char* number, const char* subject)
{
    return QByteArray(".\\\" Made by make-manual; see its sources.\n.TH VSPIMPORT ") + number +
           " \"\" \"vspimport " VSPIMPORT_VERSION "\"\n" + section("NAME") + "vspimport \\- " +
           subject + '\n';
}

QByteArray optionEntry(const OptionText& option)
{
    QByteArray term = QByteArray(".B \\-\\-") + troff(option.name);
    if (option.letter)
        term = QByteArray(".BR \\-") + option.letter + " \", \" \\-\\-" + troff(option.name);
    else if (option.value)
        term = QByteArray(".BI \\-\\-") + troff(option.name) + " \" " + troff(option.value) + '"';
    QByteArray text = troff(option.help);
    if (*option.manual)
        text += '\n' + troff(option.manual);
    return entry(term, text);
}

QByteArray suffixes()
{
    QString list = QString::fromLatin1(defaults::formats).remove(QStringLiteral("*."));
    return troff(list.split(QLatin1Char(';'), Qt::SkipEmptyParts).join(QLatin1Char(' ')));
}

QByteArray example(const char* what, const char* command)
{
    return ".PP\n" + troff(what) + "\n.PP\n.nf\n.RS\n" + troff(command) + "\n.RE\n.fi\n";
}

/// The names of definitions that a schema's reference may have, and what a reader calls them.
struct Definition
{
    const char* name;
    const char* title;
};

const Definition definitions[] = {
    {"document", "The document of \\-\\-json"},
    {"item", "An item"},
    {"movie", "A movie"},
    {"stream", "A stream"},
    {"dvd", "A DVD"},
    {"bluray", "A Blu\\-ray disc"},
    {"failure", "A failure"},
    {"event", "A line of \\-\\-events"},
    {"report", "The document of report \\-\\-json"},
};

QByteArray typeOf(const QJsonObject& value)
{
    const QString reference = value.value(QStringLiteral("$ref")).toString();
    for (const Definition& definition : definitions) {
        if (reference.endsWith(QLatin1Char('/') + QLatin1String(definition.name)))
            return QByteArray(definition.title)
                .toLower()
                .replace("dvd", "DVD")
                .replace("blu", "Blu");
    }
    QStringList names;
    for (const auto& name : value.value(QStringLiteral("enum")).toArray())
        names.append(name.toString());
    if (!names.isEmpty())
        return troff(names.join(QStringLiteral(" or ")));
    const QString type = value.value(QStringLiteral("type")).toString();
    if (type == QLatin1String("array"))
        return "array of " + typeOf(value.value(QStringLiteral("items")).toObject());
    return type.isEmpty() ? QByteArray("value") : troff(type);
}

QByteArray fieldsOf(const QJsonObject& object)
{
    QByteArray text;
    const QJsonObject fields = object.value(QStringLiteral("properties")).toObject();
    for (auto it = fields.constBegin(); it != fields.constEnd(); ++it) {
        const QJsonObject field = it.value().toObject();
        text += entry(".BR " + troff(it.key()) + " \" (" + typeOf(field) + ")\"",
                      troff(field.value(QStringLiteral("description")).toString()));
        const QJsonObject inner = field.value(QStringLiteral("items")).toObject();
        if (inner.contains(QStringLiteral("properties")))
            text += ".RS\n" + fieldsOf(inner) + ".RE\n";
    }
    return text;
}

} // namespace

QByteArray programPage()
{
    QByteArray page = head("1", "describe media files and discs, and take pictures of them") +
                      section("SYNOPSIS") +
                      ".B vspimport\n[\\fIOPTIONS\\fR] \\fIPATH\\fR...\n.br\n"
                      ".B vspimport report\n\\fIFILE\\fR [\\fB\\-\\-json\\fR]\n" +
                      section("DESCRIPTION") + troff(programSummary) + "\n.PP\n" +
                      troff("With report it shows the errors that --report has saved.") + '\n' +
                      section("OPTIONS");
    for (std::size_t i = 0; i < optionCount; ++i)
        page += optionEntry(optionTable[i]);
    page += section("FORMATS") +
            troff("Without --formats files with these suffixes are imported:") + ' ' + suffixes() +
            '\n' + section("EXIT STATUS");
    for (std::size_t i = 0; i < exitStatusCount; ++i)
        page +=
            entry(QByteArray(".B ") + exitStatusTable[i].status, troff(exitStatusTable[i].meaning));
    return page + section("EXAMPLES") +
           example("What is in a folder, as a table:", "vspimport ~/Videos") +
           example("The same as a page of pictures, for a browser:",
                   "vspimport --html films.html ~/Videos") +
           example("Files that cannot be imported, and why:",
                   "vspimport --quiet --json-lines - ~/Videos | jq -r "
                   "'select(.reason) | .url + \": \" + .reason'") +
           example("The third of eight parts of a large library:",
                   "vspimport --quiet --shard 3/8 --json-lines part3.jsonl /library") +
           section("SEE ALSO") + ".BR vspimport (5),\n.BR ffprobe (1),\n.BR parallel (1)\n";
}

QByteArray formatPage(const QJsonObject& schema)
{
    QByteArray page =
        head("5", "what the import program writes") + section("DESCRIPTION") +
        troff("With --json vspimport writes one document, with --json-lines a line for each item "
              "or failure, with --events a line for each signal of the module. All of it is JSON "
              "in UTF-8. The same is said for machines by vspimport.schema.json. Enumerators are "
              "written by name, raw values of 64 bits as decimal texts; times are seconds.") +
        "\n.PP\n" + troff(schema.value(QStringLiteral("description")).toString()) + '\n';
    const QJsonObject all = schema.value(QStringLiteral("$defs")).toObject();
    for (const Definition& definition : definitions) {
        const QJsonObject object = all.value(QLatin1String(definition.name)).toObject();
        page += section('"' + QByteArray(definition.title).toUpper() + '"') +
                troff(object.value(QStringLiteral("description")).toString()) + '\n' +
                fieldsOf(object);
    }
    return page + section("\"THE REPORT OF \\-\\-report\"") +
           troff("Blocks, each: the number 0x4D504D49, a zero, and the length of the rest, of 32 "
                 "bits, little endian; then, as Qt's data stream of version 4.8 writes them, a "
                 "date and time, and for each error its type (32 bits), its path (a text) and, "
                 "where it failed, the beginning of the file (bytes).") +
           '\n' + section("SEE ALSO") + ".BR vspimport (1)\n";
}

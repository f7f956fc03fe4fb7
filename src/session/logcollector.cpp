// SPDX-License-Identifier: GPL-2.0-or-later
#include "logcollector.h"

#include "startgate.h"
#include "terminaltext.h"
#include "vspavbased/enginecontrol.h"
#include "vsputils/cveskexception.h"
#include "vsputils/cvesklog.h"

#include <QtCore/QMutexLocker>

#include <cstdio>
#include <unistd.h>

namespace {

/// Where the progress line may stand, it is drawn over.
void showLine(const QString& text)
{
    static const char* const toLineStart = isatty(STDERR_FILENO) ? "\r\x1b[K" : "";
    std::fprintf(stderr, "%s%s\n", toLineStart, terminalText(text).toLocal8Bit().constData());
}

void waitForStart()
{
    const std::lock_guard<std::recursive_mutex> wait(startGate());
}

void showQtMessage(QtMsgType, const QMessageLogContext&, const QString& message)
{
    waitForStart();
    showLine(message);
}

/// Debug lines are for --verbose, and Qt's warnings are nothing that a person could act on.
void dropQtMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    waitForStart();
    if (type == QtCriticalMsg || type == QtFatalMsg)
        showLine(message);
}

void showEngineMessage(const char* message, void*)
{
    showLine(QString::fromUtf8(message));
}

} // namespace

struct LogCollector::Receivers
{
    static void receive(const Vesk::CVeskException& record, void* context)
    {
        static_cast<LogCollector*>(context)->add({record.code(), record.message(), false});
    }

    static void receiveFailure(const char* message, void* context)
    {
        static_cast<LogCollector*>(context)->add({0, QString::fromUtf8(message), true});
    }
};

LogCollector::LogCollector(bool verbose)
{
    Vesk::CVeskLog::setReceiver(Receivers::receive, this);
    AVBased::setFailureReceiver(Receivers::receiveFailure, this);
    qInstallMessageHandler(verbose ? showQtMessage : dropQtMessage);
    if (verbose)
        AVBased::setLogReceiver(showEngineMessage, nullptr);
}

LogCollector::~LogCollector()
{
    Vesk::CVeskLog::setReceiver(nullptr, nullptr);
    AVBased::setFailureReceiver(nullptr, nullptr);
    AVBased::setLogReceiver(nullptr, nullptr);
    qInstallMessageHandler(nullptr);
}

void LogCollector::add(const Record& record)
{
    QMutexLocker lock(&m_mutex);
    m_records.append(record);
}

QList<LogCollector::Record> LogCollector::records() const
{
    QMutexLocker lock(&m_mutex);
    return m_records;
}

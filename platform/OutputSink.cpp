// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/OutputSink.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

namespace kalvo {

OutputSink::OutputSink(const QString& path) : m_path(path) {}
OutputSink::~OutputSink() = default;

QString OutputSink::open()
{
    bool isOpen = false;
    const QFileInfo there(m_path);
    if (m_path == QLatin1String("-")) {
        auto file = std::make_unique<QFile>();
        isOpen = file->open(stdout, QIODevice::WriteOnly | QIODevice::Unbuffered);
        m_file = std::move(file);
    } else if (there.exists() && !there.isFile()) {
        m_file = std::make_unique<QFile>(m_path);
        isOpen = m_file->open(QIODevice::WriteOnly);
    } else {
        auto file = std::make_unique<QSaveFile>(m_path);
        file->setDirectWriteFallback(true);
        isOpen = file->open(QIODevice::WriteOnly);
        m_file = std::move(file);
    }
    if (!isOpen)
        failed();
    return m_why;
}

void OutputSink::write(const QByteArray& bytes)
{
    if (m_why.isEmpty() && m_file && m_file->write(bytes) != bytes.size())
        failed();
}

QString OutputSink::close()
{
    if (!m_file || !m_why.isEmpty())
        return m_why;
    if (auto* whole = qobject_cast<QSaveFile*>(m_file.get())) {
        if (!whole->commit())
            failed();
    } else {
        const bool isOut = m_file->flush() && (m_path != QLatin1String("-") || std::fflush(stdout) == 0);
        if (!isOut)
            failed();
        else
            m_file->close();
    }
    return m_why;
}

void OutputSink::failed()
{
    m_why = QStringLiteral("'%1' cannot be written: %2").arg(m_path, m_file->errorString());
}

} // namespace kalvo

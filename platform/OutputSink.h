// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

QT_BEGIN_NAMESPACE
class QFileDevice;
QT_END_NAMESPACE

namespace kalvo {

/// One output that is written piece by piece: a file, which appears under its name only when it is whole, so that one
/// that was there before stays until then, or standard output. Every write is checked to the close.
class OutputSink
{
public:
    /// "-" is standard output. A place that is no plain file (a pipe, a device) is written straight.
    explicit OutputSink(const QString& path);
    ~OutputSink();

    /// @return why not, empty when it is open.
    QString open();
    void write(const QByteArray& bytes);
    /// @return why the output is not whole, empty when it is safely written.
    QString close();
    QString path() const { return m_path; }

private:
    void failed();

    QString m_path;
    std::unique_ptr<QFileDevice> m_file;
    QString m_why;
};

} // namespace kalvo

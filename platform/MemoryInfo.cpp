// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/MemoryInfo.h"

#include <QFile>

#include <charconv>

#if defined(Q_OS_WIN)
#include <windows.h>
#elif defined(Q_OS_MACOS)
#include <mach/mach.h>
#include <sys/sysctl.h>
#endif

namespace kalvo {

namespace {

MemoryInfo infoOf(quint64 total, quint64 available)
{
    if (total == 0)
        return {};
    available = qMin(available, total);
    return {total, available, static_cast<int>((total - available) * 100 / total)};
}

/// The kilobytes of a line such as "MemTotal:       16316484 kB", as bytes.
quint64 bytesOfLine(std::string_view text, std::string_view label)
{
    size_t at = text.find(label);
    if (at == std::string_view::npos)
        return 0;
    at = text.find_first_not_of(' ', at + label.size());
    quint64 kilobytes = 0;
    if (at != std::string_view::npos)
        std::from_chars(text.data() + at, text.data() + text.size(), kilobytes);
    return kilobytes * 1024;
}

} // namespace

MemoryInfo memoryInfoFrom(std::string_view procMeminfo)
{
    return infoOf(bytesOfLine(procMeminfo, "MemTotal:"), bytesOfLine(procMeminfo, "MemAvailable:"));
}

MemoryInfo memoryInfo()
{
#if defined(Q_OS_WIN)
    MEMORYSTATUSEX status;
    status.dwLength = sizeof(status);
    if (!GlobalMemoryStatusEx(&status))
        return {};
    return infoOf(status.ullTotalPhys, status.ullAvailPhys);
#elif defined(Q_OS_MACOS)
    quint64 total = 0;
    size_t size = sizeof(total);
    if (sysctlbyname("hw.memsize", &total, &size, nullptr, 0) != 0)
        return {};
    vm_statistics64_data_t pages{};
    mach_msg_type_number_t count = HOST_VM_INFO64_COUNT;
    if (host_statistics64(mach_host_self(), HOST_VM_INFO64, reinterpret_cast<host_info64_t>(&pages), &count) !=
        KERN_SUCCESS)
        return {};
    return infoOf(total, (quint64(pages.free_count) + pages.inactive_count) * vm_kernel_page_size);
#else
    QFile file(QStringLiteral("/proc/meminfo"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray text = file.readAll();
    return memoryInfoFrom({text.constData(), static_cast<size_t>(text.size())});
#endif
}

} // namespace kalvo

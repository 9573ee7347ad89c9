// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/CurvePath.h"

#include "graphics/GraphScale.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kalvo {

namespace {

constexpr double kOffLine = 0.1;  ///< pixels
constexpr double kFarthest = 1e9; ///< beyond it a product of coordinates would lose the window

/// A column's numbers, from memory where it has them there.
class ColumnReader
{
public:
    ColumnReader(const FlexGrid& grid, int col) : m_grid(grid), m_col(col), m_numbers(grid.numbers(col)) {}
    /// NaN for a cell without a number.
    double at(int row) const
    {
        if (!m_numbers || row < m_numbers->firstRow)
            return cellNumber(m_grid, row, m_col);
        const auto index = static_cast<size_t>(row - m_numbers->firstRow);
        const double value = index < m_numbers->values.size() ? m_numbers->values[index] : std::nan("");
        return std::isfinite(value) ? value : std::nan("");
    }
    bool isBlank(int row) const
    {
        if (m_numbers && row >= m_numbers->firstRow)
            return std::isnan(at(row));
        return m_grid.textMatrix(row, m_col).isEmpty();
    }

private:
    const FlexGrid& m_grid;
    const int m_col;
    const std::optional<FlexGrid::Numbers> m_numbers;
};

/// Cuts the line a-b to the window; false when nothing of it is inside.
bool cutTo(const QRectF& window, QPointF& a, QPointF& b)
{
    double from = 0.0, to = 1.0;
    const QPointF d = b - a;
    const auto cut = [&from, &to](double delta, double room) {
        if (delta == 0.0)
            return room >= 0.0;
        const double t = room / delta;
        if (delta < 0.0)
            from = std::max(from, t);
        else
            to = std::min(to, t);
        return from <= to;
    };
    if (!cut(-d.x(), a.x() - window.left()) || !cut(d.x(), window.right() - a.x()) ||
        !cut(-d.y(), a.y() - window.top()) || !cut(d.y(), window.bottom() - a.y()))
        return false;
    const QPointF start = a;
    a = start + from * d;
    b = start + to * d;
    return true;
}

/// Takes points one after the other and makes lines of them.
class PathMaker
{
public:
    PathMaker(const CurveMap& map, CurvePath& path) : m_map(map), m_path(path) {}

    void add(const QPointF& point)
    {
        if (!m_path.start)
            m_path.start = point;
        if (m_count > 0 && m_map.pixel > 0.0 && columnOf(point) == columnOf(m_first)) {
            if (point.y() < m_low.y())
                m_low = point;
            if (point.y() > m_high.y())
                m_high = point;
            m_last = point;
            ++m_count;
            return;
        }
        flush();
        m_first = m_low = m_high = m_last = point;
        m_count = 1;
    }
    /// Points that follow are not joined to those before.
    void lift()
    {
        flush();
        endLine();
    }

private:
    double columnOf(const QPointF& point) const { return std::floor(point.x() / m_map.pixel); }
    void flush()
    {
        if (m_count == 0)
            return;
        straighten(m_first);
        if (m_count > 1) {
            const bool isLowFirst = m_low.x() <= m_high.x();
            straighten(isLowFirst ? m_low : m_high);
            straighten(isLowFirst ? m_high : m_low);
            straighten(m_last);
        }
        m_count = 0;
    }
    /// Holds a point back as long as a straight line from the last corner passes all points since then closely enough.
    void straighten(const QPointF& point)
    {
        if (m_hasHeld) {
            const double dx = point.x() - m_pen.x();
            const double slope = (point.y() - m_pen.y()) / dx;
            if (!(m_map.pixel > 0.0 && dx > 0.0 && m_hasPen && slope >= m_least && slope <= m_most))
                lineTo(m_held);
        } else if (!m_hasPen) {
            lineTo(point);
            return;
        }
        if (point == m_pen) {
            m_hasHeld = false;
            return;
        }
        const double dx = point.x() - m_pen.x(), dy = point.y() - m_pen.y();
        const double room = kOffLine * m_map.pixel;
        m_least = dx > 0.0 ? std::max(m_least, (dy - room) / dx) : kNoSlope;
        m_most = dx > 0.0 ? std::min(m_most, (dy + room) / dx) : -kNoSlope;
        m_held = point;
        m_hasHeld = true;
    }
    void endLine()
    {
        if (m_hasHeld)
            lineTo(m_held);
        m_hasHeld = m_hasPen = m_isOpen = false;
    }
    void lineTo(const QPointF& point)
    {
        if (m_hasPen && point != m_pen) {
            QPointF a = m_pen, b = point;
            if (cutTo(m_map.window, a, b)) {
                if (!m_isOpen || m_path.lines.last().last() != a)
                    m_path.lines.append(QList<QPointF>{a});
                m_path.lines.last().append(b);
                m_path.length += std::hypot(b.x() - a.x(), b.y() - a.y());
                m_isOpen = true;
            } else {
                m_isOpen = false;
            }
        }
        m_pen = point;
        m_hasPen = true;
        m_least = -kNoSlope;
        m_most = kNoSlope;
    }

    static constexpr double kNoSlope = std::numeric_limits<double>::infinity();
    const CurveMap& m_map;
    CurvePath& m_path;
    QPointF m_first, m_low, m_high, m_last; ///< of the points within a pixel
    int m_count = 0;
    QPointF m_pen, m_held;
    double m_least = -kNoSlope, m_most = kNoSlope; ///< slopes from the pen that pass all points since then
    bool m_hasPen = false, m_isOpen = false, m_hasHeld = false;
};

} // namespace

CurvePath curvePath(const FlexGrid& hydrographTable, int col, const CurveMap& map)
{
    CurvePath path;
    if (col < 2 || col >= hydrographTable.cols())
        return path;
    const ColumnReader minutes(hydrographTable, 1), flows(hydrographTable, col);
    PathMaker maker(map, path);
    const auto within = [](double at) { return std::clamp(at, -kFarthest, kFarthest); };
    for (int row = 1; row < hydrographTable.rows() && !flows.isBlank(row); ++row) {
        const QPointF point(within(map.origin.x() + minutes.at(row) * map.perMinute),
                            within(map.origin.y() - flows.at(row) * map.perFlow));
        if (std::isnan(point.x()) || std::isnan(point.y()))
            maker.lift();
        else
            maker.add(point);
    }
    maker.lift();
    return path;
}

} // namespace kalvo

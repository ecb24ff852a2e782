#pragma once

#include <QHash>
#include <QImage>
#include <QWidget>

#include <cmath>

namespace tarvel4 {

/** A window as it is drawn, and the contrasts that are seen in it: those of the WCAG, 1 to 21. */
class Drawing
{
public:
    explicit Drawing(QWidget &window)
        : m_window(window)
        , m_image(window.size() * scale, QImage::Format_RGB32)
    {
        m_image.setDevicePixelRatio(scale); // so that thin strokes have pixels of their own
        m_image.fill(Qt::magenta);
        window.render(&m_image);
    }

    static double contrast(QRgb a, QRgb b)
    {
        const double one = luminanceOf(a) + 0.05;
        const double other = luminanceOf(b) + 0.05;
        return one > other ? one / other : other / one;
    }

    /** The part of a widget, its whole by default, that shows at all, in points of the window. */
    QRect areaOf(const QWidget &widget, const QRect &part = {}) const
    {
        const QRect area =
            (part.isNull() ? widget.rect() : part) & widget.visibleRegion().boundingRect();
        return area.translated(widget.mapTo(&m_window, QPoint()));
    }

    /** The colour of most pixels. */
    QRgb groundOf(const QRect &area) const
    {
        QHash<QRgb, int> counts;
        forEachPixel(area, [&counts](QRgb pixel, QRgb) { ++counts[pixel]; });
        QRgb ground = 0;
        for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
            if (it.value() > counts.value(ground))
                ground = it.key();
        }
        return ground;
    }

    /** That of a text, or whatever else is on a ground of one colour. */
    double contrastOnGround(const QRect &area) const
    {
        const QRgb ground = groundOf(area);
        double best = 1;
        forEachPixel(area, [&](QRgb pixel, QRgb) { best = qMax(best, contrast(pixel, ground)); });
        return best;
    }

    /** That of the left edge of an area, or of all that is inside it, to what lies outside. */
    double contrastOfEdge(const QRect &area) const
    {
        const QRect strip(area.left() - 2, area.center().y(), 6, 1);
        const QRgb outside = m_image.pixel(strip.topLeft() * scale);
        double best = 1;
        forEachPixel(strip, [&](QRgb pixel, QRgb) { best = qMax(best, contrast(pixel, outside)); });
        return best;
    }

    /** How many points are clearly, by 3:1, of another colour in another drawing of the window. */
    int clearlyOther(const QRect &area, const Drawing &other) const
    {
        int count = 0;
        forEachPixel(
            area, [&count](QRgb one, QRgb two) { count += contrast(one, two) >= 3 ? 1 : 0; },
            &other);
        return count / (scale * scale);
    }

    QRgb at(const QPoint &place) const { return m_image.pixel(place * scale); }

private:
    static constexpr int scale = 2;

    static double luminanceOf(QRgb colour)
    {
        const auto linear = [](int channel) {
            const double part = channel / 255.0;
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour))
            + 0.0722 * linear(qBlue(colour));
    }

    template <class Visit>
    void forEachPixel(const QRect &area, Visit visit, const Drawing *other = nullptr) const
    {
        const QRect pixels = QRect(area.topLeft() * scale, area.size() * scale) & m_image.rect();
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            for (int x = pixels.left(); x <= pixels.right(); ++x)
                visit(m_image.pixel(x, y), other ? other->m_image.pixel(x, y) : 0);
        }
    }

    QWidget &m_window;
    QImage m_image;
};

} // namespace tarvel4

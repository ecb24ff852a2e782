#include "ui/colours.h"

#include <QColor>

#include <utility>

namespace tarvel4 {

namespace {

struct Shade
{
    QRgb light;
    QRgb dark;
};

constexpr Shade ink{0xff102a43, 0xfff0f4f8};
constexpr Shade paper{0xfff6f8fa, 0xff151d26};
constexpr Shade card{0xffffffff, 0xff1b2530};
constexpr Shade button{0xffffffff, 0xff243241};
constexpr Shade hovered{0xffe3f2f5, 0xff1f3d48};
constexpr Shade pressed{0xffd5dde5, 0xff394958};
constexpr Shade border{0xff6f8295, 0xff8296aa};
constexpr Shade muted{0xff52667a, 0xffa9b9c8};
constexpr Shade unusable{0xffeef1f4, 0xff1e2731};
constexpr Shade done{0xff449fae, 0xff0d788c};
constexpr Shade chosen{0xff0d7e92, 0xff0e8096};
constexpr Shade onChosen{0xffffffff, 0xffffffff};
constexpr Shade teal{0xff0b7285, 0xff6fd3e3};
constexpr Shade alarm{0xffb3400a, 0xffffa46b};

constexpr std::pair<QPalette::ColorRole, Shade> roles[] = {
    {QPalette::WindowText, ink},
    {QPalette::Text, ink},
    {QPalette::ButtonText, ink},
    {QPalette::Window, paper},
    {QPalette::Base, card},
    {QPalette::Button, button},
    {QPalette::AlternateBase, hovered},
    {QPalette::Midlight, pressed},
    {QPalette::Mid, border},
    {QPalette::Dark, muted},
    {QPalette::PlaceholderText, muted},
    {QPalette::Shadow, unusable},
    {QPalette::Light, done},
    {QPalette::Highlight, chosen},
    {QPalette::HighlightedText, onChosen},
    {QPalette::Link, teal},
    {QPalette::LinkVisited, teal},
    {QPalette::BrightText, alarm},
    {QPalette::ToolTipBase, ink},
    {QPalette::ToolTipText, paper},
};

} // namespace

Colours::Scheme Colours::schemeOf(const QPalette &desktop)
{
    const auto lightnessOf = [&desktop](QPalette::ColorRole role) {
        return desktop.color(QPalette::Active, role).lightness();
    };
    return lightnessOf(QPalette::Window) < lightnessOf(QPalette::WindowText) ? Scheme::Dark
                                                                             : Scheme::Light;
}

QPalette Colours::palette(Scheme scheme)
{
    const auto colourOf = [scheme](const Shade &shade) {
        return QColor(scheme == Scheme::Dark ? shade.dark : shade.light);
    };
    QPalette palette;
    for (const auto &[role, shade] : roles)
        palette.setColor(QPalette::All, role, colourOf(shade));
    for (const QPalette::ColorRole text :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, text, colourOf(muted));
    return palette;
}

} // namespace tarvel4

#pragma once

#include <QByteArray>

#include <array>

namespace tarvel4 {

/** Letters for a karaoke screen: 5 dots wide and 7 high, capitals only. */
namespace KaraokeFont {

constexpr int width = 5;
constexpr int height = 7;

/** The rows of a character from its top; in each the leftmost dot is the highest of five bits. What
 * is not in the font is blank. */
std::array<quint8, height> glyph(char character);

} // namespace KaraokeFont

} // namespace tarvel4

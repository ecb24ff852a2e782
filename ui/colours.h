#pragma once

#include <QPalette>

namespace tarvel4 {

/** The program's own colours, of which the style sheet only knows the roles of the palette. */
namespace Colours {

enum class Scheme { Light, Dark };

/** The scheme of a desktop with such a palette: the one in which windows are as light as there. */
Scheme schemeOf(const QPalette &desktop);

/**
 * All colours of a scheme. What the style sheet and the delegates take each role for:
 * Window, Base and Button are backgrounds; AlternateBase is one under the mouse, Midlight one that
 * is pressed and a line that only divides, Shadow one that can't be used now. Mid bounds fields,
 * buttons and marks, Link what is under the mouse or has the focus. Dark is less important text,
 * BrightText one that alarms. Highlight is what is chosen, Light the done part of a progress.
 */
QPalette palette(Scheme scheme);

} // namespace Colours

} // namespace tarvel4

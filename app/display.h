#pragma once

#include <memory>

namespace tarvel4 {

/** The display that the window is to appear on, looked for before Qt does: without one it aborts
 * the program. */
class Display
{
public:
    /** The words are those of the command line, which may name a platform or a display. What was
     * reached is held as long as this lives: an X server may start afresh when its last client
     * goes. */
    Display(int argc, char *const argv[]);
    ~Display();
    Display(const Display &) = delete;
    Display &operator=(const Display &) = delete;

    /** False where it is certain that Qt will find no display. */
    bool isReachable() const { return m_isReachable; }

private:
    struct Connection;
    std::unique_ptr<Connection> m_connection; ///< null where none is needed
    bool m_isReachable = true;
};

} // namespace tarvel4

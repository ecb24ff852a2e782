# Sourced by ./run: whether there is a display for a window, and why it can't be reached.

has_wayland() {
  [ -n "${WAYLAND_DISPLAY-}" ] || [ "${XDG_SESSION_TYPE-}" = wayland ]
}

# What stands between the user and a window, one reason a line; to be called when the program found no display.
why_no_window() {
  echo "There is no window, since no display can be reached:"
  if [ -n "${QT_QPA_PLATFORM-}" ]; then
    echo "- QT_QPA_PLATFORM=$QT_QPA_PLATFORM chooses the kind of display; unset it to have it found."
  fi
  local socket
  if has_wayland; then
    socket=${WAYLAND_DISPLAY:-wayland-0}
    case $socket in
      /*) ;;
      *) socket=${XDG_RUNTIME_DIR-}/$socket ;;
    esac
    if [ ! -S "$socket" ]; then
      echo "- Wayland: there is no $socket${XDG_RUNTIME_DIR:+ (XDG_RUNTIME_DIR=$XDG_RUNTIME_DIR)}; the session has ended, or it is another user's."
    elif [ ! -w "$socket" ]; then
      echo "- Wayland: $socket belongs to $(stat -c %U "$socket"), and you are $(id -un)."
    else
      echo "- Wayland: at $socket nobody answers, or Qt's part for it (${wayland_packages[*]-}) is missing."
    fi
  fi
  case ${DISPLAY-} in
    '')
      echo "- X: DISPLAY is not set."
      ;;
    :*)
      socket=${DISPLAY#:}
      socket=/tmp/.X11-unix/X${socket%%.*}
      if [ ! -S "$socket" ]; then
        echo "- X: DISPLAY=$DISPLAY, but there is no $socket: no X server runs there."
      else
        echo "- X: the server of DISPLAY=$DISPLAY refuses $(id -un); XAUTHORITY=${XAUTHORITY-} may be missing or another user's."
      fi
      ;;
    *)
      echo "- X: DISPLAY=$DISPLAY doesn't answer; over ssh, connect anew with ssh -X."
      ;;
  esac
  echo "The same workflow in the terminal: ./run demo"
}

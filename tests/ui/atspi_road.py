"""Walks the whole road of the window by the accessibility bus alone: finds controls by name and role, presses them, types
into them, and reads rows and results. Started by atspi_road, which makes the bus, the screen and the folder.

atspi_road.py PROGRAM FOLDER
"""
import ctypes
import pathlib
import shutil
import subprocess
import sys
import time

PATIENCE = 15  # seconds
MAIN = "Tarvel4 Soft"
SONGS = 400
RETURN, F2 = 0xFF0D, 0xFFBF  # of X
IMPORT = "Seleziona le basi musicali che desideri inserire nella memoria di Tarvel"
TRANSFER = "Trasferisci song nella\nmemoria di Tarvel"


def start_bus():
    """The bus comes up when somebody asks for its address; it has to be there before the program is."""
    subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                    "org.a11y.Bus.GetAddress"], check=True, stdout=subprocess.DEVNULL, timeout=PATIENCE)


start_bus()
import pyatspi  # noqa: E402 (connects to the bus)
from gi.repository import Atspi, GLib  # noqa: E402


def wait_for(what, find):
    """The first result of find() that is something; ends the test after a while."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            found = find()
        except (GLib.Error, LookupError, RuntimeError, StopIteration):  # it has just gone
            found = None
        if found:
            return found
        listen()
        time.sleep(0.01)
    raise LookupError(f"never came: {what}")


def listen():
    """Takes the events that have come."""
    while GLib.MainContext.default().iteration(False):
        pass


def do(node):
    """What a control does. One that opens a dialog may keep back its answer until the dialog is closed."""
    Atspi.set_timeout(200, 200)
    try:
        node.queryAction().doAction(0)
    except GLib.Error:
        pass
    finally:
        Atspi.set_timeout(5000, 5000)


def give_keyboard_to(title):
    """What a window manager does when a dialog has closed; here is none."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    x11.XDefaultRootWindow.restype = ctypes.c_ulong
    windows, count = ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
    ignored = ctypes.c_ulong()
    x11.XQueryTree(display, ctypes.c_ulong(x11.XDefaultRootWindow(display)), ctypes.byref(ignored), ctypes.byref(ignored),
                   ctypes.byref(windows), ctypes.byref(count))
    for window in windows[:count.value]:
        name = ctypes.c_char_p()
        x11.XFetchName(display, ctypes.c_ulong(window), ctypes.byref(name))
        if name.value == title.encode():
            x11.XSetInputFocus(display, ctypes.c_ulong(window), 2, ctypes.c_ulong(0))
    x11.XCloseDisplay(display)


def descendants(node):
    """All below, but what lists and tables hold, which may be long."""
    yield node
    if node.getRoleName() in ("tree", "table", "list"):
        return
    for index in range(node.childCount):
        child = node.getChildAtIndex(index)
        if child is not None:
            yield from descendants(child)


def is_usable(node):
    states = node.getState()
    return states.contains(pyatspi.STATE_SHOWING) and states.contains(pyatspi.STATE_ENABLED)


class Program:
    def __init__(self, program):
        self.process = subprocess.Popen([program])
        desktop = pyatspi.Registry.getDesktop(0)
        self.node = wait_for("the program", lambda: next(
            (node for node in desktop if node is not None and node.get_process_id() == self.process.pid), None))

        self.told = []  # at once, by notifications
        self.steps = 0  # of values, which are those of a progress
        pyatspi.Registry.registerEventListener(self.notice, "object:state-changed:showing")
        pyatspi.Registry.registerEventListener(self.count, "object:property-change:accessible-value")

    def notice(self, event):
        try:
            if event.detail1 and event.source.getRoleName() == "notification":
                self.told.append(event.source.name)
        except GLib.Error:  # it has just gone
            pass

    def count(self, _event):
        self.steps += 1

    def windows(self, title):
        """The windows and dialogs of that title."""
        return [node for node in self.node if node is not None and node.name == title]

    def window(self, title):
        return wait_for(title, lambda: self.windows(title))[0]

    def gone(self, title):
        wait_for(f"the end of {title}", lambda: not self.windows(title))

    def find(self, title, role, name):
        """A control that can be used, in a window or dialog of that title."""
        return wait_for(f"{role} {name}", lambda: next(
            (node for window in self.windows(title) for node in descendants(window)
             if node.getRoleName() == role and node.name == name and is_usable(node)), None))

    def press(self, window, role, name):
        do(self.find(window, role, name))

    def write(self, window, name, text):
        node = self.find(window, "text", name)
        assert node.queryEditableText().setTextContents(text)
        assert node.queryText().getText(0, -1) == text

    def menu(self, *names):
        """An entry, by the names of its menu and its own."""
        node = self.window(MAIN)
        for name in names:
            node = wait_for(name, lambda: next(item for item in descendants(node) if item.name == name))
        do(node)
        return node

    def type_key(self, key):
        """A key of the keyboard, which goes to what has the focus."""
        Atspi.generate_keyboard_event(key, None, Atspi.KeySynthType.SYM)

    def rows(self, window=MAIN, name="Song"):
        """The rows of a table, as the words of their cells."""
        table = self.find(window, "table", name).queryTable()
        return [[cell.name for cell in (table.getAccessibleAt(row, column) for column in range(table.nColumns)) if cell]
                for row in range(table.nRows)]

    def dump(self):
        for window in filter(None, self.node):
            print("----", window.name, file=sys.stderr)
            for node in descendants(window):
                print(repr(node.name), node.getRoleName(), is_usable(node), file=sys.stderr)


def choose(program, title, path):
    """A path, typed into a file dialog."""
    name = "Nome del file:" if title == "Seleziona i file da importare" else "Cartella:"
    program.write(title, name, path)
    program.press(title, "push button", "Apri" if name == "Nome del file:" else "Scegli")
    program.gone(title)


def confirm(program, title, text):
    """Reads a message, and presses its button."""
    program.find(title, "label", text)
    program.press(title, "push button", "OK")
    wait_for(f"the end of {text}", lambda: all(
        node.name != text for window in program.windows(title) for node in descendants(window)))


def import_and_synchronise(program, folder):
    program.press(MAIN, "push button", IMPORT)
    songs = [str(song) for song in sorted((folder / "songs").iterdir())]
    choose(program, "Seleziona i file da importare", " ".join(f'"{song}"' for song in songs))
    program.find("Riassunto importazione", "label",
                 "Sono stati esaminti 2 files, trovate 2 songs di cui 1 di (c)K-Varo")
    program.press("Riassunto importazione", "push button", "Si")
    read_preview(program, folder)
    program.press("Backup", "push button", "Sfoglia...")
    choose(program, "Scegli cartella", str(folder / "backups"))
    program.press("Backup", "push button", "Esegui backup")
    confirm(program, "Backup", "Backup eseguito correttamente")
    program.press("Richiesta conferma", "push button", "Si tutti")
    wait_for("two rows that were updated", lambda: 2 == sum(
        "MIDI, Aggiornata dal database K-Varo" in row for row in program.rows()))


def read_preview(program, folder):
    """What the synchronisation would write, and that nothing is written yet."""
    before = [song.read_bytes() for song in sorted((folder / "songs").iterdir())]
    title = "Anteprima della sincronizzazione"
    program.press("Backup", "push button", "Anteprima...")
    program.find(title, "label", "Anteprima della sincronizzazione: 1 da confermare, 1 da aggiornare")
    cells = [cell for row in program.rows(title, "Che cosa cambierebbe") for cell in row]
    assert "BELLACIA.kar" in cells and "TRADIZIONALE" in cells, cells
    program.press(title, "push button", "Torna alla domanda")
    program.gone(title)
    assert before == [song.read_bytes() for song in sorted((folder / "songs").iterdir())]


def sort(program):
    """By a menu that tells what the order is; the songs were imported by name."""
    for entry, names in (("Titolo", ["BELLACIA.kar", "SANTALUC.mid"]), ("Decrescente", ["SANTALUC.mid", "BELLACIA.kar"])):
        node = program.menu("Strumenti", "Ordina per", entry)
        wait_for(entry, lambda: node.getState().contains(pyatspi.STATE_CHECKED))
        rows = program.rows()
        assert [row for row, name in zip(rows, names) if name in row] == rows, rows


def read_report(program):
    """What became of each song of the last job."""
    program.menu("Strumenti", "Mostra l'ultimo resoconto")
    program.find(MAIN, "label", "Sincronizzazione: 2 aggiornate")
    rows = program.rows(MAIN, "Song del resoconto")
    assert {tuple(row[:2]) for row in rows} == {("aggiornata", "BELLACIA.kar"), ("aggiornata", "SANTALUC.mid")}, rows
    program.press(MAIN, "push button", "Chiudi il resoconto")


def undo(program, folder, before):
    """Takes the edit back: the song has its old bytes, and the row its old title."""
    title = "Annulla l'ultima modifica"
    program.menu("Strumenti", title + "...")
    program.press(title, "push button", "Sì")
    confirm(program, title, "Song tornate com'erano: 1 di 1")
    assert (folder / "songs" / "SANTALUC.mid").read_bytes() == before
    wait_for("the old title", lambda: all("A song" not in row for row in program.rows()))


def transfer(program, folder):
    program.press(MAIN, "push button", TRANSFER)
    choose(program, "Scegli cartella", str(folder / "card" / "music"))
    confirm(program, "Trasferimento", "Tutti i file sono stati copiati correttamente")
    assert len(list((folder / "card" / "music").iterdir())) == 2


def save_list(program, folder):
    title = "Salva lista song"
    program.menu("Strumenti", "Salva lista delle song")
    program.write(title, "CF/USB:", str(folder / "card"))
    program.write(title, "File:", str(folder / "list.csv"))
    program.press(title, "push button", "Salva")
    confirm(program, title, "Operazione completata")
    program.press(title, "push button", "Esci")
    program.gone(title)
    songs = (folder / "list.csv").read_text().splitlines()
    assert len(songs) == 3 and songs[0] == "TITOLO;ARTISTA;FILE;", songs
    assert any(song.startswith("A SONG;") for song in songs), songs


def edit(program):
    """Finds a song, goes to it, and gives it another title."""
    program.write(MAIN, "Cerca nelle song", "santaluc")
    program.find(MAIN, "label",
                 "2 song, 1 mostrata, 2 aggiornate. Anche quelle nascoste vengono sincronizzate.")
    field = program.find(MAIN, "text", "Cerca nelle song")

    def has_focus():
        give_keyboard_to(MAIN)  # again: a dialog that closes late takes it away
        field.queryComponent().grabFocus()
        return field.getState().contains(pyatspi.STATE_FOCUSED)

    wait_for("the focus", has_focus)
    program.type_key(RETURN)  # goes to the row
    program.type_key(F2)
    title = "Modifica dati song"
    program.write(title, "Titolo", "A song")
    program.press(title, "push button", "Salva")
    program.gone(title)
    wait_for("the row that was edited", lambda: [
        row for row in program.rows() if "MIDI, Modificata a mano" in row and "A song" in row])
    program.write(MAIN, "Cerca nelle song", "")


def read_help(program):
    title = "Aiuto Tarvel4 Soft"
    program.menu("Aiuto", title)
    guide = program.find(title, "label", "Testo dell'aiuto")
    assert "Tarvel4" in guide.queryText().getText(0, 500)
    program.press(title, "push button", "OK")
    program.gone(title)


def import_many(program, folder):
    """The progress of many songs is told now and then, not song by song."""
    many = folder / "many"
    many.mkdir()
    for number in range(SONGS):
        shutil.copy(folder / "songs" / "SANTALUC.mid", many / f"{number}.mid")
    program.told.clear()
    program.steps = 0
    program.menu("File", "Importa una cartella...")
    choose(program, "Scegli la cartella da importare", str(many))
    program.press("Riassunto importazione", "push button", "No")
    program.find(MAIN, "label", f"{SONGS} song")
    wait_for("the end of the job", lambda: f"Importazione: {SONGS} importate" in program.told)
    assert "Importo la libreria..." in program.told, program.told
    assert 0 < program.steps < SONGS / 4, program.steps


def road(program, folder):
    import_and_synchronise(program, folder)
    sort(program)
    read_report(program)
    before = (folder / "songs" / "SANTALUC.mid").read_bytes()
    edit(program)
    transfer(program, folder)
    save_list(program, folder)
    undo(program, folder, before)
    read_help(program)
    import_many(program, folder)
    program.menu("File", "Esci")
    assert program.process.wait(PATIENCE) == 0


def main():
    program = Program(sys.argv[1])
    try:
        road(program, pathlib.Path(sys.argv[2]))
        print("The whole road was walked by the accessibility bus.")
    except LookupError:
        program.dump()
        raise
    finally:
        program.process.kill()


main()

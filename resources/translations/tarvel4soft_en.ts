<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="it_IT">
<context>
    <name>BackupJob</name>
    <message>
        <source>Backup</source>
        <translation>Backup</translation>
    </message>
    <message>
        <source>Backup eseguito correttamente</source>
        <translation>Backup done correctly</translation>
    </message>
    <message>
        <source>Eseguo backup dellla libreria...</source>
        <translation>Backing up the library...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>Backup FALLITO !!!</source>
        <translation>Backup FAILED !!!</translation>
    </message>
    <message>
        <source>%1: qui resta il backup incompleto</source>
        <translation>%1: the incomplete backup stays here</translation>
    </message>
</context>
<context>
    <name>Cli</name>
    <message>
        <source>opzione sconosciuta: %1</source>
        <translation>unknown option: %1</translation>
    </message>
    <message>
        <source>opzione ambigua: %1</source>
        <translation>ambiguous option: %1</translation>
    </message>
    <message>
        <source>l&apos;opzione --%1 non prende valori</source>
        <translation>option --%1 takes no value</translation>
    </message>
    <message>
        <source>manca il valore dell&apos;opzione --%1</source>
        <translation>option --%1 needs a value</translation>
    </message>
    <message>
        <source>il valore dell&apos;opzione --%1 non è UTF-8 valido</source>
        <translation>the value of option --%1 is not valid UTF-8</translation>
    </message>
    <message>
        <source>il valore dell&apos;opzione --%1 è uno di: %2</source>
        <translation>the value of option --%1 is one of: %2</translation>
    </message>
    <message>
        <source>%1: il nome non è UTF-8 valido e non può essere aperto</source>
        <translation>%1: the name is not valid UTF-8 and can&apos;t be opened</translation>
    </message>
    <message>
        <source>%1: non è una cartella</source>
        <translation>%1: not a folder</translation>
    </message>
    <message>
        <source>%1 e %2: hanno lo stesso nome, il backup non può contenerli entrambi</source>
        <translation>%1 and %2: have the same name, a backup can&apos;t hold both</translation>
    </message>
    <message>
        <source>manca --to DIR</source>
        <translation>--to DIR is missing</translation>
    </message>
    <message>
        <source>Copia le song in una nuova cartella di backup.</source>
        <translation>Copies the songs into a new backup folder.</translation>
    </message>
    <message>
        <source>cartella che riceve la cartella di backup (necessaria)</source>
        <translation>folder that receives the backup folder (required)</translation>
    </message>
    <message>
        <source>catalogue vuole una sola opzione tra --name, --title, --genres e --artists</source>
        <translation>catalogue takes just one of --name, --title, --genres and --artists</translation>
    </message>
    <message>
        <source>il catalogo non lo contiene, o non una volta sola</source>
        <translation>the catalogue does not hold it, or more than once</translation>
    </message>
    <message>
        <source>Cerca nel catalogo.</source>
        <translation>Looks something up in the catalogue.</translation>
    </message>
    <message>
        <source>la song con questo nome di file</source>
        <translation>the song with this file name</translation>
    </message>
    <message>
        <source>la sola song con questo titolo</source>
        <translation>the only song with this title</translation>
    </message>
    <message>
        <source>i generi</source>
        <translation>the genres</translation>
    </message>
    <message>
        <source>gli interpreti</source>
        <translation>the artists</translation>
    </message>
    <message>
        <source>cerca le song anche nelle cartelle e nelle loro sottocartelle</source>
        <translation>looks for songs in folders too, and in their subfolders</translation>
    </message>
    <message>
        <source>non è stato fatto nulla; --help spiega l&apos;uso</source>
        <translation>nothing was done; --help explains the usage</translation>
    </message>
    <message>
        <source>--title e --title-from-name si escludono</source>
        <translation>--title and --title-from-name exclude each other</translation>
    </message>
    <message>
        <source>tonalità sconosciuta: %1</source>
        <translation>unknown key: %1</translation>
    </message>
    <message>
        <source>--length vuole un numero di secondi</source>
        <translation>--length takes a number of seconds</translation>
    </message>
    <message>
        <source>--bpm vuole un numero</source>
        <translation>--bpm takes a number</translation>
    </message>
    <message>
        <source>--add-marker vuole BATTUTA:TESTO, con una battuta da 1 a 65535</source>
        <translation>--add-marker takes BAR:TEXT, with a bar from 1 to 65535</translation>
    </message>
    <message>
        <source>non c&apos;è nulla da modificare</source>
        <translation>there is nothing to change</translation>
    </message>
    <message>
        <source>Corregge i dati delle song a mano.</source>
        <translation>Corrects the data of songs by hand.</translation>
    </message>
    <message>
        <source>titolo</source>
        <translation>title</translation>
    </message>
    <message>
        <source>interprete</source>
        <translation>artist</translation>
    </message>
    <message>
        <source>genere musicale</source>
        <translation>genre</translation>
    </message>
    <message>
        <source>autore</source>
        <translation>author</translation>
    </message>
    <message>
        <source>durata in secondi</source>
        <translation>length in seconds</translation>
    </message>
    <message>
        <source>battiti al minuto</source>
        <translation>beats per minute</translation>
    </message>
    <message>
        <source>tonalità, come Bb oppure A-</source>
        <translation>key, as Bb or A-</translation>
    </message>
    <message>
        <source>prende il titolo dal nome del file</source>
        <translation>takes the title from the file&apos;s name</translation>
    </message>
    <message>
        <source>aggiunge un marker; può essere ripetuta</source>
        <translation>adds a marker; can be repeated</translation>
    </message>
    <message>
        <source>%1: esiste già</source>
        <translation>%1: exists already</translation>
    </message>
    <message>
        <source>Scrive come file .mid la parte MIDI di una song MFx.</source>
        <translation>Writes the MIDI stream of an MFx song as a .mid file.</translation>
    </message>
    <message>
        <source>file da scrivere (accanto alla song, con suffisso .mid)</source>
        <translation>file to write (beside the song, with the suffix .mid)</translation>
    </message>
    <message>
        <source>Indice...</source>
        <translation>Index...</translation>
    </message>
    <message>
        <source>%1: l&apos;indice non è stato scritto</source>
        <translation>%1: the index was not written</translation>
    </message>
    <message>
        <source>%1: la memoria non è preparata</source>
        <translation>%1: the memory is not prepared</translation>
    </message>
    <message>
        <source>index vuole update, rebuild, verify oppure delete</source>
        <translation>index takes update, rebuild, verify or delete</translation>
    </message>
    <message>
        <source>Aggiorna, rifà, controlla o toglie l&apos;indice di una memoria.</source>
        <translation>Updates, rebuilds, verifies or deletes the index of a memory.</translation>
    </message>
    <message>
        <source>Lettura...</source>
        <translation>Reading...</translation>
    </message>
    <message>
        <source>Mostra i dati di ogni song.</source>
        <translation>Shows the data of each song.</translation>
    </message>
    <message>
        <source>Scrive la lista delle song di una memoria preparata.</source>
        <translation>Writes the list of the songs of a prepared memory.</translation>
    </message>
    <message>
        <source>ordine della lista (title)</source>
        <translation>order of the list (title)</translation>
    </message>
    <message>
        <source>file da scrivere, al posto dell&apos;uscita standard</source>
        <translation>file to write in place of standard output</translation>
    </message>
    <message>
        <source>il catalogo non può essere letto</source>
        <translation>the catalogue can&apos;t be read</translation>
    </message>
    <message>
        <source>tutto fatto</source>
        <translation>all done</translation>
    </message>
    <message>
        <source>finito, ma una song è illeggibile, non trovata, rifiutata o fallita, o un indice ha errori</source>
        <translation>finished, but a song was unreadable, not found, refused or failed, or an index has errors</translation>
    </message>
    <message>
        <source>uso errato, nulla di fatto</source>
        <translation>wrong usage, nothing done</translation>
    </message>
    <message>
        <source>il lavoro non può essere fatto</source>
        <translation>the job could not be done</translation>
    </message>
    <message>
        <source>interrotto prima della song successiva</source>
        <translation>interrupted before the next song</translation>
    </message>
    <message>
        <source>catalogo SQLite da usare al posto di quello incorporato</source>
        <translation>SQLite catalogue to use in place of the built-in one</translation>
    </message>
    <message>
        <source>scrive i dati come JSON, un oggetto per riga</source>
        <translation>writes the data as JSON, one object a line</translation>
    </message>
    <message>
        <source>scrive il log in log.txt nella cartella corrente</source>
        <translation>writes the log to log.txt in the working directory</translation>
    </message>
    <message>
        <source>non mostra l&apos;avanzamento</source>
        <translation>shows no progress</translation>
    </message>
    <message>
        <source>mostra questo aiuto (anche -h)</source>
        <translation>shows this help (also -h)</translation>
    </message>
    <message>
        <source>mostra la versione</source>
        <translation>shows the version</translation>
    </message>
    <message>
        <source>i dati non possono essere scritti</source>
        <translation>the output can&apos;t be written</translation>
    </message>
    <message>
        <source>comando sconosciuto: %1</source>
        <translation>unknown command: %1</translation>
    </message>
    <message>
        <source>manca il comando</source>
        <translation>a command is missing</translation>
    </message>
    <message>
        <source>uso: %1</source>
        <translation>usage: %1</translation>
    </message>
    <message>
        <source>Uso: %1</source>
        <translation>Usage: %1</translation>
    </message>
    <message>
        <source>Comandi:</source>
        <translation>Commands:</translation>
    </message>
    <message>
        <source>Opzioni di ogni comando:</source>
        <translation>Options of every command:</translation>
    </message>
    <message>
        <source>Stato d&apos;uscita:</source>
        <translation>Exit status:</translation>
    </message>
    <message>
        <source>Opzioni:</source>
        <translation>Options:</translation>
    </message>
    <message>
        <source>%1 di %2</source>
        <translation>%1 of %2</translation>
    </message>
    <message>
        <source>, %1/s, ancora %2</source>
        <translation>, %1/s, %2 left</translation>
    </message>
    <message>
        <source>%1: non può essere letto, viene saltato</source>
        <translation>%1: can&apos;t be read, skipped</translation>
    </message>
    <message>
        <source>--backup e --no-backup si escludono</source>
        <translation>--backup and --no-backup exclude each other</translation>
    </message>
    <message>
        <source>manca --backup DIR oppure --no-backup</source>
        <translation>--backup DIR or --no-backup is missing</translation>
    </message>
    <message>
        <source>--unpublished ask vuole un terminale</source>
        <translation>--unpublished ask needs a terminal</translation>
    </message>
    <message>
        <source>Completa i dati delle song con quelli del catalogo.</source>
        <translation>Completes the data of songs from the catalogue.</translation>
    </message>
    <message>
        <source>prima copia le song in una nuova cartella di DIR</source>
        <translation>first copies the songs into a new folder in DIR</translation>
    </message>
    <message>
        <source>non fa il backup (una delle due è necessaria)</source>
        <translation>makes no backup (one of the two is required)</translation>
    </message>
    <message>
        <source>se cambiare le song non pubblicate da K-Varo</source>
        <translation>whether to change songs not published by K-Varo</translation>
    </message>
    <message>
        <source>mostra che cosa cambierebbe e non scrive nulla</source>
        <translation>shows what would change, and writes nothing</translation>
    </message>
    <message>
        <source>%1: non è stato pubblicato da K-Varo. Si vuole procedere comunque con le modifiche?</source>
        <translation>%1: was not published by K-Varo. Change it all the same?</translation>
    </message>
    <message>
        <source>%1: esiste già, vuoi sostituirlo?</source>
        <translation>%1: exists already, replace it?</translation>
    </message>
    <message>
        <source>[s] sì, [t] sì a tutti, [n] no, [o] no a tutti</source>
        <translation>[y] yes, [a] yes to all, [n] no, [o] no to all</translation>
    </message>
    <message>
        <source>--overwrite ask vuole un terminale</source>
        <translation>--overwrite ask needs a terminal</translation>
    </message>
    <message>
        <source>%1: non si trova nella memoria %2</source>
        <translation>%1: is not in the memory %2</translation>
    </message>
    <message>
        <source>Copia le song nella memoria e ne aggiorna l&apos;indice.</source>
        <translation>Copies the songs to the memory and updates its index.</translation>
    </message>
    <message>
        <source>cartella della memoria che riceve le song (necessaria)</source>
        <translation>folder of the memory that receives the songs (required)</translation>
    </message>
    <message>
        <source>cartella da prendere per la memoria, al posto del volume</source>
        <translation>folder to be taken as the memory, in place of the volume</translation>
    </message>
    <message>
        <source>se sostituire le song che esistono già</source>
        <translation>whether to replace songs that exist already</translation>
    </message>
    <message>
        <source>%1: appartiene all&apos;indice di una memoria, non può essere sovrascritto</source>
        <translation>%1: it belongs to the index of a memory, which can&apos;t be overwritten</translation>
    </message>
    <message>
        <source>%1: interrotto, la memoria è preparata</source>
        <translation>%1: interrupted, the memory is prepared</translation>
    </message>
    <message>
        <source>%1: interrotto, la memoria non è preparata</source>
        <translation>%1: interrupted, the memory is not prepared</translation>
    </message>
    <message>
        <source>un&apos;interruzione lo ha lasciato come %1</source>
        <translation>an interruption left it as %1</translation>
    </message>
    <message>
        <source>è una cartella (senza --recursive non viene letta)</source>
        <translation>it is a folder (not read without --recursive)</translation>
    </message>
    <message>
        <source>la cartella non può essere letta</source>
        <translation>the folder can&apos;t be read</translation>
    </message>
    <message>
        <source>%1: non è un catalogo, o è danneggiato</source>
        <translation>%1: it is no catalogue, or it is damaged</translation>
    </message>
    <message>
        <source>%1: qui resta il backup incompleto</source>
        <translation>%1: the incomplete backup stays here</translation>
    </message>
    <message>
        <source>altri PATH, uno per riga (-: dall&apos;ingresso standard)</source>
        <translation>further PATHs, one a line (-: from standard input)</translation>
    </message>
    <message>
        <source>in FILE ogni PATH finisce con un byte zero</source>
        <translation>in FILE a zero byte ends each PATH</translation>
    </message>
    <message>
        <source>history vuole clear oppure nulla</source>
        <translation>history takes clear or nothing</translation>
    </message>
    <message>
        <source>--limit vuole un numero</source>
        <translation>--limit takes a number</translation>
    </message>
    <message>
        <source>Elenca le ultime modifiche, o le dimentica.</source>
        <translation>Lists the last changes, or forgets them.</translation>
    </message>
    <message>
        <source>solo le ultime N</source>
        <translation>only the last N</translation>
    </message>
    <message>
        <source>nessuno legge più i dati (| head)</source>
        <translation>nobody reads the data any more (| head)</translation>
    </message>
    <message>
        <source>Esempi:</source>
        <translation>Examples:</translation>
    </message>
    <message>
        <source>--null vuole --files-from FILE</source>
        <translation>--null needs --files-from FILE</translation>
    </message>
    <message>
        <source>il backup non contiene una song con questo nome</source>
        <translation>the backup holds no song of this name</translation>
    </message>
    <message>
        <source>non c&apos;è nulla da annullare</source>
        <translation>there is nothing to undo</translation>
    </message>
    <message>
        <source>nessuna modifica ha il numero %1</source>
        <translation>no change has the number %1</translation>
    </message>
    <message>
        <source>manca --from BACKUP</source>
        <translation>--from BACKUP is missing</translation>
    </message>
    <message>
        <source>Annulla l&apos;ultima modifica, o quella che history chiama RUN, byte per byte.</source>
        <translation>Takes back the newest change, or the one that history calls RUN, byte for byte.</translation>
    </message>
    <message>
        <source>Rimette le song come sono in un backup.</source>
        <translation>Gives songs the bytes that they have in a backup.</translation>
    </message>
    <message>
        <source>cartella del backup (necessaria)</source>
        <translation>folder of the backup (required)</translation>
    </message>
    <message>
        <source>Adegua l&apos;indice alle song che ci sono.</source>
        <translation>Brings the index up to date with the songs that are there.</translation>
    </message>
    <message>
        <source>Rifà da capo l&apos;indice di tutte le song.</source>
        <translation>Builds the index of all songs anew.</translation>
    </message>
    <message>
        <source>Controlla l&apos;indice, senza cambiarlo: una riga per ogni errore.</source>
        <translation>Checks the index without changing it: a line for each error.</translation>
    </message>
    <message>
        <source>Toglie l&apos;indice; le song restano.</source>
        <translation>Removes the index; the songs stay.</translation>
    </message>
    <message>
        <source>Azioni:</source>
        <translation>Actions:</translation>
    </message>
    <message>
        <source>dice che cosa è stato fatto di ogni file, e che errore ha dato il sistema (anche -v)</source>
        <translation>tells what was done with each file, and the system&apos;s own error (also -v)</translation>
    </message>
    <message>
        <source>il sistema ha rifiutato %1: %2 (errore %3)</source>
        <translation>the system refused %1: %2 (error %3)</translation>
    </message>
    <message>
        <source>esiste già, non copiata</source>
        <translation>exists already, not copied</translation>
    </message>
    <message>
        <source>copiata</source>
        <translation>copied</translation>
    </message>
    <message>
        <source>salvata</source>
        <translation>saved</translation>
    </message>
    <message>
        <source>scritto</source>
        <translation>written</translation>
    </message>
    <message>
        <source>esaminato</source>
        <translation>examined</translation>
    </message>
    <message>
        <source>ora non c&apos;è alcun indice</source>
        <translation>there is no index now</translation>
    </message>
    <message>
        <source>letta</source>
        <translation>read</translation>
    </message>
    <message>
        <source>il catalogo non la contiene</source>
        <translation>the catalogue does not have it</translation>
    </message>
    <message>
        <source>non pubblicata da K-Varo, lasciata com&apos;era</source>
        <translation>not published by K-Varo, left as it was</translation>
    </message>
    <message>
        <source>da salvare</source>
        <translation>to be saved</translation>
    </message>
    <message>
        <source>da ripristinare</source>
        <translation>to be restored</translation>
    </message>
    <message>
        <source>ripristinata</source>
        <translation>restored</translation>
    </message>
    <message>
        <source>--fields vuole nomi fra questi, separati da virgole: %1</source>
        <translation>--fields takes names among these, separated by commas: %1</translation>
    </message>
    <message>
        <source>solo questi dati di ogni song</source>
        <translation>only these data of each song</translation>
    </message>
    <message>
        <source>scrive una tabella CSV, con i nomi nella prima riga</source>
        <translation>writes a CSV table, with the names in the first line</translation>
    </message>
    <message>
        <source>--csv e --fields non vanno con --json</source>
        <translation>--csv and --fields do not go with --json</translation>
    </message>
    <message>
        <source>completion vuole bash, zsh o fish</source>
        <translation>completion takes bash, zsh or fish</translation>
    </message>
    <message>
        <source>Scrive lo script con cui quella shell completa una riga di comando.</source>
        <translation>Prints the script by which that shell completes a command line.</translation>
    </message>
    <message>
        <source>un percorso vuoto non indica né un file né una cartella</source>
        <translation>an empty path names neither a file nor a folder</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Uso: tarvel4soft [OPZIONE]... [FILE]...
Apre la finestra di Tarvel4 Soft e importa i file e le cartelle indicati.

  -h, --help   mostra questo aiuto
  --version    mostra la versione
  --           da qui in poi ci sono solo file

Per lavorare dal terminale, senza finestra: tarvel4soft-cli --help
</source>
        <translation>Usage: tarvel4soft [OPTION]... [FILE]...
Opens the window of Tarvel4 Soft and imports the named files and folders.

  -h, --help   shows this help
  --version    shows the version
  --           from here on there are only files

To work in the terminal, without a window: tarvel4soft-cli --help
</translation>
    </message>
    <message>
        <source>tarvel4soft: opzione sconosciuta: %1 (--help mostra quelle che ci sono)
</source>
        <translation>tarvel4soft: unknown option: %1 (--help shows those that there are)
</translation>
    </message>
    <message>
        <source>tarvel4soft: nessuno schermo raggiungibile, la finestra non si apre.
</source>
        <translation>tarvel4soft: no display can be reached, the window does not open.
</translation>
    </message>
</context>
<context>
    <name>EditCheck</name>
    <message>
        <source>in %1 song su %2 (%3): </source>
        <translation>in %1 of %2 songs (%3): </translation>
    </message>
</context>
<context>
    <name>EditJob</name>
    <message>
        <source>Aggiornamento file</source>
        <translation>Updating files</translation>
    </message>
    <message>
        <source>Aggiorno la libreria...</source>
        <translation>Updating the library...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Cancel</translation>
    </message>
</context>
<context>
    <name>EditMany</name>
    <message>
        <source>Modifica più song</source>
        <translation>Edit several songs</translation>
    </message>
    <message>
        <source>La tabella non mostra nessuna song.</source>
        <translation>The table shows no song.</translation>
    </message>
</context>
<context>
    <name>EjectOffer</name>
    <message>
        <source>Espelli</source>
        <translation>Eject</translation>
    </message>
    <message>
        <source>Espulsione</source>
        <translation>Eject</translation>
    </message>
    <message>
        <source>La memoria è stata espulsa: ora la puoi togliere.</source>
        <translation>The memory has been ejected: you can take it out now.</translation>
    </message>
    <message>
        <source>La memoria è stata scollegata, quindi la puoi togliere, ma non è stata espulsa:</source>
        <translation>The memory has been unmounted, so you can take it out, but it was not ejected:</translation>
    </message>
    <message>
        <source>Non è stato possibile espellere la memoria:</source>
        <translation>The memory could not be ejected:</translation>
    </message>
    <message>
        <source>Riprova</source>
        <translation>Try again</translation>
    </message>
</context>
<context>
    <name>FieldCheck</name>
    <message>
        <source>occuperebbe %1 byte, più di %2: altri programmi non leggerebbero più la song</source>
        <translation>it would take %1 bytes, more than %2: other programs would no longer read the song</translation>
    </message>
    <message>
        <source>il lettore mostrerà: %1</source>
        <translation>the player will show: %1</translation>
    </message>
    <message>
        <source>ne resteranno %1 caratteri su %2</source>
        <translation>%1 characters of %2 will remain</translation>
    </message>
    <message>
        <source>caratteri che restano: %1</source>
        <translation>characters left: %1</translation>
    </message>
</context>
<context>
    <name>FieldTexts</name>
    <message>
        <source>Titolo</source>
        <translation>Title</translation>
    </message>
    <message>
        <source>Interprete</source>
        <translation>Artist</translation>
    </message>
    <message>
        <source>Genere</source>
        <translation>Genre</translation>
    </message>
    <message>
        <source>Autore</source>
        <translation>Author</translation>
    </message>
    <message>
        <source>Durata</source>
        <translation>Length</translation>
    </message>
    <message>
        <source>Tempo (BPM)</source>
        <translation>Tempo (BPM)</translation>
    </message>
    <message>
        <source>Tonalità</source>
        <translation>Key</translation>
    </message>
    <message>
        <source>Pubblicata da K-Varo</source>
        <translation>Published by K-Varo</translation>
    </message>
    <message>
        <source>Marker</source>
        <translation>Markers</translation>
    </message>
    <message>
        <source>Nome lungo</source>
        <translation>Long name</translation>
    </message>
    <message>
        <source>Indicatori MFx</source>
        <translation>MFx flags</translation>
    </message>
    <message>
        <source>sì</source>
        <translation>yes</translation>
    </message>
    <message>
        <source>no</source>
        <translation>no</translation>
    </message>
</context>
<context>
    <name>FileFacts</name>
    <message>
        <source>%1 byte, %2</source>
        <translation>%1 bytes, %2</translation>
    </message>
    <message>
        <source>%1 (più recente)</source>
        <translation>%1 (newer)</translation>
    </message>
</context>
<context>
    <name>FluidPlayer</name>
    <message>
        <source>i suoni in %1 non possono essere letti</source>
        <translation>the sounds in %1 can&apos;t be read</translation>
    </message>
    <message>
        <source>la parte MIDI è danneggiata e non può essere suonata</source>
        <translation>its MIDI part is damaged and can&apos;t be played</translation>
    </message>
    <message>
        <source>nessuna uscita audio è disponibile</source>
        <translation>no audio output is available</translation>
    </message>
</context>
<context>
    <name>ImportJob</name>
    <message>
        <source>Lettura file</source>
        <translation>Reading files</translation>
    </message>
    <message>
        <source>Importo la libreria...</source>
        <translation>Importing the library...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Cancel</translation>
    </message>
</context>
<context>
    <name>IndexLoader</name>
    <message>
        <source>%1: l&apos;ultimo record non è intero</source>
        <translation>%1: the last record is not whole</translation>
    </message>
</context>
<context>
    <name>IndexVerifier</name>
    <message>
        <source>Il file non si può leggere</source>
        <translation>The file can&apos;t be read</translation>
    </message>
    <message>
        <source>Il record è incompleto</source>
        <translation>The record is cut off</translation>
    </message>
    <message>
        <source>Dopo il testo ci sono altri byte</source>
        <translation>There are other bytes after the text</translation>
    </message>
    <message>
        <source>Il numero %1 non è di nessuna song</source>
        <translation>Number %1 belongs to no song</translation>
    </message>
    <message>
        <source>Il numero %1 è usato due volte</source>
        <translation>Number %1 is used twice</translation>
    </message>
    <message>
        <source>Il numero %1 non c&apos;è</source>
        <translation>Number %1 is missing</translation>
    </message>
    <message>
        <source>Il numero %1 non è quello del record</source>
        <translation>Number %1 is not that of the record</translation>
    </message>
    <message>
        <source>Il percorso non è valido</source>
        <translation>The path is not valid</translation>
    </message>
    <message>
        <source>La song non esiste: %1</source>
        <translation>The song does not exist: %1</translation>
    </message>
    <message>
        <source>Il percorso della song è %1</source>
        <translation>The path of the song is %1</translation>
    </message>
    <message>
        <source>La data o l&apos;ora non sono quelle della song: %1</source>
        <translation>The date or time is not that of the song: %1</translation>
    </message>
    <message>
        <source>La song non è nell&apos;indice: %1</source>
        <translation>The song is not in the index: %1</translation>
    </message>
    <message>
        <source>I record sono %1 e non %2</source>
        <translation>There are %1 records and not %2</translation>
    </message>
    <message>
        <source>Qui non sta questa song</source>
        <translation>This is not the place of this song</translation>
    </message>
    <message>
        <source>Il titolo non è in ordine</source>
        <translation>The title is out of order</translation>
    </message>
    <message>
        <source>L&apos;attributo %1 non è valido</source>
        <translation>Attribute %1 is not valid</translation>
    </message>
    <message>
        <source>Il primo record non è di un interprete</source>
        <translation>The first record is not an artist&apos;s</translation>
    </message>
    <message>
        <source>L&apos;interprete non è in ordine</source>
        <translation>The artist is out of order</translation>
    </message>
    <message>
        <source>Il gruppo precedente ha %1 song</source>
        <translation>The group before it has %1 songs</translation>
    </message>
    <message>
        <source>Il gruppo ha %1 song</source>
        <translation>The group has %1 songs</translation>
    </message>
    <message>
        <source>Il gruppo è vuoto</source>
        <translation>The group is empty</translation>
    </message>
    <message>
        <source>L&apos;interprete ha già un gruppo</source>
        <translation>The artist has a group already</translation>
    </message>
    <message>
        <source>Il record non è quello dei titoli</source>
        <translation>The record is not the one of the titles</translation>
    </message>
    <message>
        <source>Il file non è lungo %1 byte</source>
        <translation>The file is not %1 bytes long</translation>
    </message>
    <message>
        <source>La lettera &quot;%1&quot; non è al suo posto</source>
        <translation>The letter &quot;%1&quot; is not in its place</translation>
    </message>
    <message>
        <source>I titoli sono %1</source>
        <translation>There are %1 titles</translation>
    </message>
    <message>
        <source>Gli interpreti sono %1</source>
        <translation>There are %1 artists</translation>
    </message>
    <message>
        <source>Un numero riservato non è zero</source>
        <translation>A reserved number is not zero</translation>
    </message>
    <message>
        <source>Il testo è vuoto</source>
        <translation>The text is empty</translation>
    </message>
    <message>
        <source>Il testo non è in maiuscolo o ha spazi attorno</source>
        <translation>The text is not in upper case, or has blanks around it</translation>
    </message>
</context>
<context>
    <name>JobReport</name>
    <message>
        <source>non letta</source>
        <translation>not read</translation>
    </message>
    <message>
        <source>non lette</source>
        <translation>not read</translation>
    </message>
    <message>
        <source>con la grafica (.cdg) non copiata</source>
        <translation>with the graphics (.cdg) not copied</translation>
    </message>
    <message>
        <source>problema della memoria</source>
        <translation>problem of the memory</translation>
    </message>
    <message>
        <source>problemi della memoria</source>
        <translation>problems of the memory</translation>
    </message>
    <message>
        <source>non raggiunta</source>
        <translation>not reached</translation>
    </message>
    <message>
        <source>non raggiunte</source>
        <translation>not reached</translation>
    </message>
    <message>
        <source>non nel catalogo</source>
        <translation>not in the catalogue</translation>
    </message>
    <message>
        <source>non pubblicata da K-Varo</source>
        <translation>not published by K-Varo</translation>
    </message>
    <message>
        <source>non pubblicate da K-Varo</source>
        <translation>not published by K-Varo</translation>
    </message>
    <message>
        <source>da confermare</source>
        <translation>to be confirmed</translation>
    </message>
    <message>
        <source>già presente</source>
        <translation>already there</translation>
    </message>
    <message>
        <source>già presenti</source>
        <translation>already there</translation>
    </message>
    <message>
        <source>sostituita</source>
        <translation>replaced</translation>
    </message>
    <message>
        <source>sostituite</source>
        <translation>replaced</translation>
    </message>
    <message>
        <source>aggiornata</source>
        <translation>updated</translation>
    </message>
    <message>
        <source>aggiornate</source>
        <translation>updated</translation>
    </message>
    <message>
        <source>corretta</source>
        <translation>edited</translation>
    </message>
    <message>
        <source>corrette</source>
        <translation>edited</translation>
    </message>
    <message>
        <source>tornata com&apos;era</source>
        <translation>as it was before</translation>
    </message>
    <message>
        <source>tornate com&apos;erano</source>
        <translation>as they were before</translation>
    </message>
    <message>
        <source>copiata</source>
        <translation>copied</translation>
    </message>
    <message>
        <source>copiate</source>
        <translation>copied</translation>
    </message>
    <message>
        <source>importata</source>
        <translation>imported</translation>
    </message>
    <message>
        <source>importate</source>
        <translation>imported</translation>
    </message>
    <message>
        <source>già completa</source>
        <translation>already complete</translation>
    </message>
    <message>
        <source>già complete</source>
        <translation>already complete</translation>
    </message>
    <message>
        <source>il lavoro si è fermato prima</source>
        <translation>the job stopped before it</translation>
    </message>
    <message>
        <source>lasciata com&apos;era, come hai scelto</source>
        <translation>left as it was, as you chose</translation>
    </message>
    <message>
        <source>non pubblicata da K-Varo: prima di cambiarla ti viene chiesto</source>
        <translation>not published by K-Varo: you are asked before it is changed</translation>
    </message>
    <message>
        <source>il file che c&apos;era già è rimasto, come hai scelto</source>
        <translation>the file that was there was kept, as you chose</translation>
    </message>
    <message>
        <source>un&apos;altra song con lo stesso nome ha preso il suo posto</source>
        <translation>another song of the same name took its place</translation>
    </message>
    <message>
        <source>il catalogo non aggiunge nulla</source>
        <translation>the catalogue adds nothing</translation>
    </message>
    <message>
        <source>Importazione</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>Sincronizzazione</source>
        <translation>Synchronisation</translation>
    </message>
    <message>
        <source>Anteprima della sincronizzazione</source>
        <translation>Preview of the synchronisation</translation>
    </message>
    <message>
        <source>Trasferimento</source>
        <translation>Transfer</translation>
    </message>
    <message>
        <source>Correzione</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>Annullamento</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>nessuna song</source>
        <translation>no songs</translation>
    </message>
    <message>
        <source>da aggiornare</source>
        <translation>to be updated</translation>
    </message>
    <message>
        <source>non copiata</source>
        <translation>not copied</translation>
    </message>
    <message>
        <source>non copiate</source>
        <translation>not copied</translation>
    </message>
    <message>
        <source>non tornata com&apos;era</source>
        <translation>not put back</translation>
    </message>
    <message>
        <source>non tornate com&apos;erano</source>
        <translation>not put back</translation>
    </message>
    <message>
        <source>non salvata</source>
        <translation>not saved</translation>
    </message>
    <message>
        <source>non salvate</source>
        <translation>not saved</translation>
    </message>
    <message>
        <source>non trovata né per nome né per titolo</source>
        <translation>found neither by name nor by title</translation>
    </message>
    <message>
        <source>non salvabile</source>
        <translation>cannot be saved</translation>
    </message>
    <message>
        <source>non salvabili</source>
        <translation>cannot be saved</translation>
    </message>
</context>
<context>
    <name>JournalFile</name>
    <message>
        <source>Il registro delle modifiche %1 non può essere scritto (%2): le song vengono salvate lo stesso, ma queste modifiche non si potranno annullare.</source>
        <translation>The journal of changes %1 can&apos;t be written (%2): songs are saved all the same, but these changes can&apos;t be undone.</translation>
    </message>
    <message>
        <source>Il registro delle modifiche %1 non può essere aperto: %2</source>
        <translation>The journal of changes %1 can&apos;t be opened: %2</translation>
    </message>
    <message>
        <source>Il registro delle modifiche %1 è di una versione più recente del programma.</source>
        <translation>The journal of changes %1 is from a newer version of the program.</translation>
    </message>
    <message>
        <source>Il registro delle modifiche %1 è danneggiato.</source>
        <translation>The journal of changes %1 is damaged.</translation>
    </message>
    <message>
        <source>È stato messo da parte come %1: le modifiche precedenti non si possono annullare.</source>
        <translation>It was set aside as %1: earlier changes can&apos;t be undone.</translation>
    </message>
    <message>
        <source>Le modifiche non si potranno annullare.</source>
        <translation>Changes can&apos;t be undone.</translation>
    </message>
    <message>
        <source>Il registro delle modifiche %1 non può essere letto: %2</source>
        <translation>The journal of changes %1 can&apos;t be read: %2</translation>
    </message>
</context>
<context>
    <name>LibrarySteps</name>
    <message>
        <source>Seleziona i file da importare</source>
        <translation>Choose the files to import</translation>
    </message>
    <message>
        <source>Scegli cartella</source>
        <translation>Choose a folder</translation>
    </message>
</context>
<context>
    <name>ManualEdit</name>
    <message>
        <source>Modifica dati song</source>
        <translation>Edit song data</translation>
    </message>
    <message>
        <source>Non è stato possibile salvare i seguenti file:</source>
        <translation>The following files could not be saved:</translation>
    </message>
</context>
<context>
    <name>MediaSidebar</name>
    <message>
        <source>%1, %2 liberi</source>
        <translation>%1, %2 free</translation>
    </message>
</context>
<context>
    <name>Mp3Player</name>
    <message>
        <source>il sistema non può suonare questo file MP3</source>
        <translation>the system can&apos;t play this MP3 file</translation>
    </message>
</context>
<context>
    <name>Outcome</name>
    <message>
        <source>il tag ID3 è incompleto</source>
        <translation>the ID3 tag is incomplete</translation>
    </message>
    <message>
        <source>il tag avrebbe %1 byte, ne sono ammessi %2</source>
        <translation>the tag would have %1 bytes, %2 are allowed</translation>
    </message>
    <message>
        <source>l&apos;intestazione è incompleta</source>
        <translation>the header is incomplete</translation>
    </message>
    <message>
        <source>la parte compressa non si espande</source>
        <translation>the compressed part can&apos;t be expanded</translation>
    </message>
    <message>
        <source>la parte compressa non contiene MIDI</source>
        <translation>the compressed part holds no MIDI data</translation>
    </message>
    <message>
        <source>non è un file MIDI di formato 0 o 1</source>
        <translation>it is no MIDI file of format 0 or 1</translation>
    </message>
    <message>
        <source>la song va ripresa da un backup</source>
        <translation>take the song from a backup</translation>
    </message>
    <message>
        <source>il file non c&apos;è: controllare il percorso, o inserire la memoria su cui si trova</source>
        <translation>there is no such file: check the path, or insert the card that holds it</translation>
    </message>
    <message>
        <source>non è un file, ma una cartella, una pipe o un dispositivo</source>
        <translation>it is no file, but a folder, a pipe or a device</translation>
    </message>
    <message>
        <source>manca il permesso di leggerlo</source>
        <translation>you have no permission to read it</translation>
    </message>
    <message>
        <source>non è una song .mid, .kar, .mp3, .mf3, .mf4 o .mf5</source>
        <translation>it is no .mid, .kar, .mp3, .mf3, .mf4 or .mf5 song</translation>
    </message>
    <message>
        <source>la song è danneggiata: %1</source>
        <translation>the song is damaged: %1</translation>
    </message>
    <message>
        <source>l&apos;indice è danneggiato (%1): va ricostruito</source>
        <translation>the index is damaged (%1): rebuild it</translation>
    </message>
    <message>
        <source>non è una song .mf3, .mf4 o .mf5</source>
        <translation>it is no .mf3, .mf4 or .mf5 song</translation>
    </message>
    <message>
        <source>il testo è troppo lungo: %1</source>
        <translation>the text is too long: %1</translation>
    </message>
    <message>
        <source>questo formato non può contenere la lettera &quot;%1&quot;</source>
        <translation>this format can&apos;t hold the letter &quot;%1&quot;</translation>
    </message>
    <message>
        <source>è troppo grande: %1</source>
        <translation>it is too large: %1</translation>
    </message>
    <message>
        <source>questo formato non può contenere marker</source>
        <translation>this format can&apos;t hold markers</translation>
    </message>
    <message>
        <source>un altro programma l&apos;ha cambiato nel frattempo: va riletto</source>
        <translation>another program has changed it meanwhile: read it again</translation>
    </message>
    <message>
        <source>manca il permesso di scriverlo</source>
        <translation>you have no permission to write it</translation>
    </message>
    <message>
        <source>il disco o la memoria ha dato un errore (%1)</source>
        <translation>the disk or card reported an error (%1)</translation>
    </message>
    <message>
        <source>il nome o il percorso è troppo lungo</source>
        <translation>the name or path is too long</translation>
    </message>
    <message>
        <source>esiste già</source>
        <translation>it exists already</translation>
    </message>
    <message>
        <source>è usato da un altro programma</source>
        <translation>another program is using it</translation>
    </message>
    <message>
        <source>al suo posto c&apos;è un collegamento, che non viene seguito</source>
        <translation>a link stands in its place, which is not followed</translation>
    </message>
    <message>
        <source>non viene sovrascritto, perché è %1</source>
        <translation>it is not overwritten, since it is %1</translation>
    </message>
    <message>
        <source>salvato, ma il disco o la memoria non l&apos;ha confermato: va controllato prima di toglierla</source>
        <translation>saved, but the disk or card did not confirm it: check it before you remove the card</translation>
    </message>
    <message>
        <source>non salvato, e il contenuto di prima non è tornato al suo posto: %1</source>
        <translation>not saved, and the bytes of before are not back in their place: %1</translation>
    </message>
    <message>
        <source>più di quanto il disco o la memoria accetta</source>
        <translation>more than the disk or card takes</translation>
    </message>
    <message>
        <source>sono ammessi al massimo %1 byte</source>
        <translation>at most %1 bytes are allowed</translation>
    </message>
    <message>
        <source>mancano almeno %1</source>
        <translation>at least %1 are missing</translation>
    </message>
    <message>
        <source>non c&apos;è abbastanza spazio libero sul disco o sulla memoria: %1</source>
        <translation>there is not enough free room on the disk or card: %1</translation>
    </message>
    <message>
        <source>il disco o la memoria è protetta da scrittura (%1): se prima si poteva scrivere, va riparata</source>
        <translation>the disk or card is write-protected (%1): if it could be written to before, repair the card</translation>
    </message>
    <message>
        <source>tornerà al prossimo avvio del programma</source>
        <translation>it will be back when the program is next started</translation>
    </message>
    <message>
        <source>%1 e %2 sono forse lo stesso file: va riparata</source>
        <translation>%1 and %2 may be the same file: repair the card</translation>
    </message>
</context>
<context>
    <name>OutputTarget</name>
    <message>
        <source>una song</source>
        <translation>a song</translation>
    </message>
    <message>
        <source>un catalogo</source>
        <translation>a catalogue</translation>
    </message>
    <message>
        <source>un file dell&apos;indice di una memoria</source>
        <translation>a file of a memory&apos;s index</translation>
    </message>
</context>
<context>
    <name>RecoveryJob</name>
    <message>
        <source>%1: rimesso al suo posto dopo un&apos;interruzione</source>
        <translation>%1: put back in its place after an interruption</translation>
    </message>
    <message>
        <source>%1: tolta la vecchia copia lasciata da un&apos;interruzione</source>
        <translation>%1: the old copy that an interruption left was removed</translation>
    </message>
    <message>
        <source>%1: la vecchia copia lasciata da un&apos;interruzione resta come %2</source>
        <translation>%1: the old copy that an interruption left stays as %2</translation>
    </message>
    <message>
        <source>%1: un salvataggio è stato interrotto, il contenuto di prima è tornato al suo posto</source>
        <translation>%1: a save was interrupted, and the song is as it was before</translation>
    </message>
    <message>
        <source>%1: un salvataggio è stato interrotto e sarà messo a posto quando la song si potrà di nuovo leggere e scrivere (%2)</source>
        <translation>%1: a save was interrupted and will be put right when the song can be read and written again (%2)</translation>
    </message>
    <message>
        <source>%1: un salvataggio è stato interrotto, ma poi la song è stata cambiata da un altro programma e resta com&apos;è</source>
        <translation>%1: a save was interrupted, but another program has changed the song since, and it stays as it is</translation>
    </message>
</context>
<context>
    <name>SongActions</name>
    <message>
        <source>Remove from list</source>
        <translation>&amp;Remove from list</translation>
    </message>
    <message>
        <source>Delete file</source>
        <translation>&amp;Delete file</translation>
    </message>
    <message>
        <source>Attenzione</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>Sei sicuro di voler cancellare il file?</source>
        <translation>Are you sure that you want to delete the file?</translation>
    </message>
    <message>
        <source>&amp;Modifica...</source>
        <translation>&amp;Edit...</translation>
    </message>
    <message>
        <source>Mostra nella cartella</source>
        <translation>&amp;Show in folder</translation>
    </message>
    <message>
        <source>&amp;Perché questo segno?</source>
        <translation>&amp;Why this mark?</translation>
    </message>
    <message>
        <source>Segno della song</source>
        <translation>Mark of the song</translation>
    </message>
</context>
<context>
    <name>SongIntake</name>
    <message>
        <source>Scegli la cartella da importare</source>
        <translation>Choose the folder to import</translation>
    </message>
    <message>
        <source>Lettura cartella</source>
        <translation>Reading the folder</translation>
    </message>
    <message>
        <source>Cerco le song...</source>
        <translation>Looking for songs...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>Qui non ci sono song.</source>
        <translation>There are no songs here.</translation>
    </message>
    <message>
        <source>%1: non può essere letto</source>
        <translation>%1: can&apos;t be read</translation>
    </message>
    <message>
        <source>Alcuni file o cartelle non possono essere letti e vengono saltati.</source>
        <translation>Some files or folders can&apos;t be read and are skipped.</translation>
    </message>
</context>
<context>
    <name>SongListWriter</name>
    <message>
        <source>TITOLO</source>
        <translation>TITLE</translation>
    </message>
    <message>
        <source>ARTISTA</source>
        <translation>ARTIST</translation>
    </message>
    <message>
        <source>FILE</source>
        <translation>FILE</translation>
    </message>
</context>
<context>
    <name>SongRows</name>
    <message>
        <source>non è nel catalogo</source>
        <translation>it is not in the catalogue</translation>
    </message>
    <message>
        <source>non è stata pubblicata da K-Varo, lasciata com&apos;era</source>
        <translation>it was not published by K-Varo, left as it was</translation>
    </message>
    <message>
        <source>Non aggiornata: %1</source>
        <translation>Not updated: %1</translation>
    </message>
    <message>
        <source>Non letta: %1</source>
        <translation>Not read: %1</translation>
    </message>
    <message>
        <source>Non salvata: %1</source>
        <translation>Not saved: %1</translation>
    </message>
    <message>
        <source>Non rimessa com&apos;era: %1</source>
        <translation>Not restored: %1</translation>
    </message>
</context>
<context>
    <name>TransferJob</name>
    <message>
        <source>Trasferimento</source>
        <translation>Transfer</translation>
    </message>
    <message>
        <source>Non è stato possibile copiare uno o più file</source>
        <translation>One or more files could not be copied</translation>
    </message>
    <message>
        <source>Tutti i file sono stati copiati correttamente</source>
        <translation>All files were copied correctly</translation>
    </message>
    <message>
        <source>Non è possibile copiare i file sul disco di sistema</source>
        <translation>Files can&apos;t be copied to the system disk</translation>
    </message>
    <message>
        <source>Non è possibile copiare i file sulla cartella principale, creare o selezionare una sottocartella</source>
        <translation>Files can&apos;t be copied to the root folder; create or choose a subfolder</translation>
    </message>
    <message>
        <source>Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST perchè sono riservate, selezionare un&apos;altra cartella</source>
        <translation>The folders BRIDGE, SFX and PLAYLIST are reserved and can&apos;t be used; choose another folder</translation>
    </message>
    <message>
        <source>Trasferimento file...</source>
        <translation>Transferring files...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>Aggiornamento</source>
        <translation>Update</translation>
    </message>
    <message>
        <source>Aggiornamento database...</source>
        <translation>Updating the database...</translation>
    </message>
    <message>
        <source>Tutto è scritto: ora si può togliere la memoria.</source>
        <translation>Everything is written: the memory can be taken out now.</translation>
    </message>
</context>
<context>
    <name>UDisksDrive</name>
    <message>
        <source>un altro programma la sta usando: chiudilo e riprova</source>
        <translation>another program is using it: close it and try again</translation>
    </message>
    <message>
        <source>il sistema non lo permette</source>
        <translation>the system does not allow it</translation>
    </message>
    <message>
        <source>il sistema non ha risposto</source>
        <translation>the system did not answer</translation>
    </message>
</context>
<context>
    <name>UndoChanges</name>
    <message>
        <source>Annulla l&apos;ultima modifica</source>
        <translation>Undo the last change</translation>
    </message>
    <message>
        <source>Le ultime modifiche non si possono leggere: nessuna song è cambiata.</source>
        <translation>The last changes can&apos;t be read: no song was changed.</translation>
    </message>
    <message>
        <source>Non c&apos;è nessuna modifica da annullare.</source>
        <translation>There is no change to undo.</translation>
    </message>
    <message>
        <source>Ultima modifica: %1
Data e ora: %2
Song: %3</source>
        <translation>Last change: %1
Date and time: %2
Songs: %3</translation>
    </message>
    <message>
        <source>Vuoi rimettere queste song com&apos;erano prima?</source>
        <translation>Do you want these songs back as they were before?</translation>
    </message>
    <message>
        <source>correzione dei dati</source>
        <translation>correction of song data</translation>
    </message>
    <message>
        <source>sincronizzazione con il database K-Varo</source>
        <translation>synchronisation with the K-Varo database</translation>
    </message>
    <message>
        <source>annullamento di una modifica</source>
        <translation>undoing of a change</translation>
    </message>
    <message>
        <source>ripristino da un backup</source>
        <translation>restoring from a backup</translation>
    </message>
    <message>
        <source>Song tornate com&apos;erano: %1 di %2</source>
        <translation>Songs as they were before: %1 of %2</translation>
    </message>
    <message>
        <source>Queste song restano come sono:</source>
        <translation>These songs stay as they are:</translation>
    </message>
    <message>
        <source>Già tornate com&apos;erano, prima che l&apos;annullamento fosse interrotto: %1</source>
        <translation>Already back as they were, before the undo was interrupted: %1</translation>
    </message>
</context>
<context>
    <name>UndoJob</name>
    <message>
        <source>Annulla le modifiche</source>
        <translation>Undo changes</translation>
    </message>
    <message>
        <source>Rimetto le song com&apos;erano...</source>
        <translation>Restoring the songs...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>una di più song con questo nome, e il backup ne contiene una sola</source>
        <translation>one of several songs of this name, and the backup holds only one</translation>
    </message>
    <message>
        <source>è stato cambiato da allora, perciò resta com&apos;è</source>
        <translation>it has been changed since then, so it stays as it is</translation>
    </message>
</context>
<context>
    <name>UpdateJob</name>
    <message>
        <source>Aggiornamento file</source>
        <translation>Updating files</translation>
    </message>
    <message>
        <source>Aggiorno la libreria...</source>
        <translation>Updating the library...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Cancel</translation>
    </message>
</context>
<context>
    <name>UpdatePreview</name>
    <message>
        <source>Anteprima</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>Cerco che cosa cambierebbe...</source>
        <translation>Looking for what would change...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Cancel</translation>
    </message>
</context>
<context>
    <name>WindowHost</name>
    <message>
        <source>%1 di %2</source>
        <translation>%1 of %2</translation>
    </message>
    <message>
        <source>esiste già, vuoi sostituirlo?</source>
        <translation>already exists. Replace it?</translation>
    </message>
    <message>
        <source>Registro delle modifiche</source>
        <translation>Journal of changes</translation>
    </message>
    <message>
        <source>Song messe a posto: %1</source>
        <translation>Songs put right: %1</translation>
    </message>
    <message>
        <source>Song da mettere a posto più tardi: %1</source>
        <translation>Songs to be put right later: %1</translation>
    </message>
    <message>
        <source>Song lasciate come sono: %1</source>
        <translation>Songs left as they are: %1</translation>
    </message>
    <message>
        <source>Salvataggi interrotti</source>
        <translation>Interrupted saves</translation>
    </message>
    <message>
        <source>Alcuni salvataggi erano stati interrotti.</source>
        <translation>Some saves had been interrupted.</translation>
    </message>
    <message>
        <source>Lavoro interrotto</source>
        <translation>Job interrupted</translation>
    </message>
</context>
<context>
    <name>tarvel4::AboutDialog</name>
    <message>
        <source>Informazioni</source>
        <translation>About</translation>
    </message>
    <message>
        <source>Tarvel4 Soft</source>
        <translation>Tarvel4 Soft</translation>
    </message>
    <message>
        <source>Version:&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp; %1&lt;br/&gt;Build date: %2&lt;br/&gt;</source>
        <translation>Version:&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp; %1&lt;br/&gt;Build date: %2&lt;br/&gt;</translation>
    </message>
    <message>
        <source>Copyright &amp;copy; 2026 &lt;a href=&quot;https://www.k-varo.example/&quot;&gt;K-Varo&lt;/a&gt;. Tutti i diritti riservati.&lt;br/&gt;Assistenza: &lt;a href=&quot;mailto:assistenza@k-varo.example&quot;&gt;assistenza@k-varo.example&lt;/a&gt;</source>
        <translation>Copyright &amp;copy; 2026 &lt;a href=&quot;https://www.k-varo.example/&quot;&gt;K-Varo&lt;/a&gt;. All rights reserved.&lt;br/&gt;Support: &lt;a href=&quot;mailto:assistenza@k-varo.example&quot;&gt;assistenza@k-varo.example&lt;/a&gt;</translation>
    </message>
</context>
<context>
    <name>tarvel4::BackupDialog</name>
    <message>
        <source>Backup</source>
        <translation>Backup</translation>
    </message>
    <message>
        <source>Sfoglia...</source>
        <translation>&amp;Browse...</translation>
    </message>
    <message>
        <source>Esegui backup</source>
        <translation>&amp;Make backup</translation>
    </message>
    <message>
        <source>Prosegui senza backup</source>
        <translation>&amp;Continue without backup</translation>
    </message>
    <message>
        <source>Annulla</source>
        <translation>C&amp;ancel</translation>
    </message>
    <message>
        <source>Si consiglia di effettuare un backup della libreria prima di procedere con l&apos;aggiornamento.
Selezionare una cartella di destinazione per il backup oppure premere &apos;Prosegui senza backup&apos;.</source>
        <translation>You are advised to back up the library before the update.
Choose a folder for the backup, or press &apos;Continue without backup&apos;.</translation>
    </message>
    <message>
        <source>Scegli cartella</source>
        <translation>Choose a folder</translation>
    </message>
    <message>
        <source>Anteprima...</source>
        <translation>&amp;Preview...</translation>
    </message>
    <message>
        <source>Mostra che cosa cambierebbe, senza scrivere nulla</source>
        <translation>Shows what would change, without writing anything</translation>
    </message>
    <message>
        <source>Cartella del backup</source>
        <translation>Folder of the backup</translation>
    </message>
</context>
<context>
    <name>tarvel4::DataEditDialog</name>
    <message>
        <source>Modifica Dati</source>
        <translation>Edit data</translation>
    </message>
    <message>
        <source>Percorso file:</source>
        <translation>File path:</translation>
    </message>
    <message>
        <source>Formato:</source>
        <translation>Format:</translation>
    </message>
    <message>
        <source>Modifica i dati della Song:</source>
        <translation>Edit the data of the song:</translation>
    </message>
    <message>
        <source>Titolo Song:</source>
        <translation>Song &amp;title:</translation>
    </message>
    <message>
        <source>Usa il titolo</source>
        <translation>Use the t&amp;itle</translation>
    </message>
    <message>
        <source>Usa il filename</source>
        <translation>Use the &amp;file name</translation>
    </message>
    <message>
        <source>Interprete:</source>
        <translation>A&amp;rtist:</translation>
    </message>
    <message>
        <source>Genere Musicale:</source>
        <translation>&amp;Genre:</translation>
    </message>
    <message>
        <source>Autore:</source>
        <translation>A&amp;uthor:</translation>
    </message>
    <message>
        <source>Durata:</source>
        <translation>Le&amp;ngth:</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>ss</source>
        <translation>ss</translation>
    </message>
    <message>
        <source>Tonalità:</source>
        <translation>&amp;Key:</translation>
    </message>
    <message>
        <source>BPM:</source>
        <translation>&amp;BPM:</translation>
    </message>
    <message>
        <source>Salva</source>
        <translation>&amp;Save</translation>
    </message>
    <message>
        <source>Annulla</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>Modifica dati song</source>
        <translation>Edit song data</translation>
    </message>
    <message>
        <source>L&apos;autore inserito verrà applicato a tutte le song della lista, sei sicuro?</source>
        <translation>The author you entered will be applied to all songs of the list. Are you sure?</translation>
    </message>
    <message>
        <source>L&apos;interprete inserito verrà applicato a tutte le song della lista, sei sicuro?</source>
        <translation>The artist you entered will be applied to all songs of the list. Are you sure?</translation>
    </message>
    <message>
        <source>Il genere inserito verrà applicato a tutte le song della lista, sei sicuro?</source>
        <translation>The genre you entered will be applied to all songs of the list. Are you sure?</translation>
    </message>
    <message>
        <source>Il titolo di tutte le song della lista verrà sovrascritto non il nome del file, sei sicuro?</source>
        <translation>The title of all songs of the list will be overwritten with the file name. Are you sure?</translation>
    </message>
    <message>
        <source>ATTENZIONE</source>
        <translation>WARNING</translation>
    </message>
    <message>
        <source>Dati della song</source>
        <translation>Data of the song</translation>
    </message>
    <message>
        <source>Titolo</source>
        <translation>Title</translation>
    </message>
    <message>
        <source>Origine del titolo</source>
        <translation>Source of the title</translation>
    </message>
    <message>
        <source>Applica il titolo a tutte</source>
        <translation>Apply the title to all</translation>
    </message>
    <message>
        <source>Applica a tutti</source>
        <comment>title</comment>
        <translation>A&amp;pply to all</translation>
    </message>
    <message>
        <source>Interprete</source>
        <translation>Artist</translation>
    </message>
    <message>
        <source>Applica l&apos;interprete a tutte</source>
        <translation>Apply the artist to all</translation>
    </message>
    <message>
        <source>Applica a tutti</source>
        <comment>artist</comment>
        <translation>Appl&amp;y to all</translation>
    </message>
    <message>
        <source>Genere musicale</source>
        <translation>Genre</translation>
    </message>
    <message>
        <source>Applica il genere a tutte</source>
        <translation>Apply the genre to all</translation>
    </message>
    <message>
        <source>Applica a tutti</source>
        <comment>genre</comment>
        <translation>App&amp;ly to all</translation>
    </message>
    <message>
        <source>Autore</source>
        <translation>Author</translation>
    </message>
    <message>
        <source>Applica l&apos;autore a tutte</source>
        <translation>Apply the author to all</translation>
    </message>
    <message>
        <source>Applica a tutti</source>
        <comment>author</comment>
        <translation>Apply t&amp;o all</translation>
    </message>
    <message>
        <source>Durata, minuti</source>
        <translation>Length, minutes</translation>
    </message>
    <message>
        <source>Durata, secondi</source>
        <translation>Length, seconds</translation>
    </message>
    <message>
        <source>Tonalità</source>
        <translation>Key</translation>
    </message>
    <message>
        <source>Tempo, battiti al minuto</source>
        <translation>Tempo, beats per minute</translation>
    </message>
    <message>
        <source>Precedente</source>
        <translation>Pre&amp;vious</translation>
    </message>
    <message>
        <source>Successiva</source>
        <translation>Ne&amp;xt</translation>
    </message>
    <message>
        <source>Salva le modifiche e passa alla song precedente</source>
        <translation>Save the changes and go to the song before</translation>
    </message>
    <message>
        <source>Salva le modifiche e passa alla song successiva</source>
        <translation>Save the changes and go to the next song</translation>
    </message>
</context>
<context>
    <name>tarvel4::EditManyDialog</name>
    <message>
        <source>A&amp;pplica</source>
        <translation>A&amp;pply</translation>
    </message>
    <message>
        <source>Modifica più song</source>
        <translation>Edit several songs</translation>
    </message>
    <message>
        <source>Song da modificare</source>
        <translation>Songs to edit</translation>
    </message>
    <message>
        <source>Scegli &amp;tutte</source>
        <translation>Choose &amp;all</translation>
    </message>
    <message>
        <source>A&amp;nnulla</source>
        <translation>&amp;Cancel</translation>
    </message>
    <message>
        <source>&amp;Song da modificare (con Ctrl o Maiusc se ne scelgono più):</source>
        <translation>&amp;Songs to edit (choose several with Ctrl or Shift):</translation>
    </message>
    <message>
        <source>&amp;Genere Musicale:</source>
        <translation>&amp;Genre:</translation>
    </message>
    <message>
        <source>&amp;Interprete:</source>
        <translation>A&amp;rtist:</translation>
    </message>
    <message>
        <source>&amp;Autore:</source>
        <translation>A&amp;uthor:</translation>
    </message>
    <message>
        <source>Scrivi in tutte: %1</source>
        <translation>Write into all: %1</translation>
    </message>
    <message>
        <source>Song scelte: %1 di %2</source>
        <translation>Songs chosen: %1 of %2</translation>
    </message>
    <message>
        <source>Titolo</source>
        <translation>Title</translation>
    </message>
    <message>
        <source>Interprete</source>
        <translation>Artist</translation>
    </message>
    <message>
        <source>File</source>
        <translation>File</translation>
    </message>
</context>
<context>
    <name>tarvel4::GroupFilter</name>
    <message>
        <source>tutte</source>
        <translation>all</translation>
    </message>
</context>
<context>
    <name>tarvel4::HelpDialog</name>
    <message>
        <source>Aiuto Tarvel4 Soft</source>
        <translation>Tarvel4 Soft help</translation>
    </message>
    <message>
        <source>Cerca nell&apos;aiuto</source>
        <translation>Search the help</translation>
    </message>
    <message>
        <source>Punto precedente</source>
        <translation>Previous place</translation>
    </message>
    <message>
        <source>Punto successivo</source>
        <translation>Next place</translation>
    </message>
    <message>
        <source>Testo dell&apos;aiuto</source>
        <translation>Text of the help</translation>
    </message>
    <message>
        <source>Cerca nell&apos;aiuto (%1)</source>
        <translation>Search the help (%1)</translation>
    </message>
    <message>
        <source>Punto successivo (%1)</source>
        <translation>Next place (%1)</translation>
    </message>
    <message>
        <source>Punto precedente (%1)</source>
        <translation>Previous place (%1)</translation>
    </message>
    <message>
        <source>Non trovato</source>
        <translation>Not found</translation>
    </message>
</context>
<context>
    <name>tarvel4::Index</name>
    <message>
        <source>Impossibile leggere: </source>
        <translation>Can&apos;t be read: </translation>
    </message>
    <message>
        <source>File non importato, path troppo lungo: </source>
        <translation>File not imported, path too long: </translation>
    </message>
</context>
<context>
    <name>tarvel4::IndexDialog</name>
    <message>
        <source>Dialog</source>
        <translation>Optimise memory</translation>
    </message>
    <message>
        <source>Seleziona la cartella principale della Compact Flash o della Penna USB che vuoi ottimizzare per Tarvel4</source>
        <translation>Choose the root &amp;folder of the Compact Flash card or USB stick to optimise for Tarvel4</translation>
    </message>
    <message>
        <source>Sfoglia</source>
        <translation>&amp;Browse</translation>
    </message>
    <message>
        <source>Seleziona l&apos;azione che vuoi eseguire:</source>
        <translation>Choose what to &amp;do:</translation>
    </message>
    <message>
        <source>Ho inserito o eliminato alcune song, aggiorna database</source>
        <translation>I &amp;added or deleted some songs, update the database</translation>
    </message>
    <message>
        <source>Ho problemi con gli archivi, ricostruisci database</source>
        <translation>I have problems with the archives, &amp;rebuild the database</translation>
    </message>
    <message>
        <source>Controlla struttura memoria</source>
        <translation>Check the &amp;memory structure</translation>
    </message>
    <message>
        <source>File found:</source>
        <translation>File found:</translation>
    </message>
    <message>
        <source>Report:</source>
        <translation>Re&amp;port:</translation>
    </message>
    <message>
        <source>Inizia</source>
        <translation>&amp;Start</translation>
    </message>
    <message>
        <source>Chiudi</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>Scegli cartella</source>
        <translation>Choose a folder</translation>
    </message>
    <message>
        <source>Ottimizza memoria</source>
        <translation>Optimise memory</translation>
    </message>
    <message>
        <source>Il percorso selezionato non esiste</source>
        <translation>The chosen path does not exist</translation>
    </message>
    <message>
        <source>Ottimizzazione memoria in corso...</source>
        <translation>Optimising the memory...</translation>
    </message>
    <message>
        <source>Operazione completata</source>
        <translation>Operation completed</translation>
    </message>
    <message>
        <source>ATTENZIONE</source>
        <translation>WARNING</translation>
    </message>
    <message>
        <source>Controllo memoria non eseguito!</source>
        <translation>The memory was not checked!</translation>
    </message>
    <message>
        <source>Controllo memoria</source>
        <translation>Memory check</translation>
    </message>
    <message>
        <source>Non è stato possibile correggere gli errori, è necesario formattare la memoria</source>
        <translation>The errors could not be corrected: the memory must be formatted</translation>
    </message>
    <message>
        <source>Durante l&apos;operazione si sono verificati alcuni errori.
Consultare il report per maggiori informazioni.</source>
        <translation>Some errors occurred during the operation.
See the report for details.</translation>
    </message>
    <message>
        <source>Operazione completata con successo</source>
        <translation>Operation completed successfully</translation>
    </message>
    <message>
        <source>Operazione non riuscita.
Assicurarsi che il disco abbia sufficiente spazio libero e che non sia protetto da scrittura.</source>
        <translation>The operation failed.
Make sure that the disk has enough free space and is not write-protected.</translation>
    </message>
    <message>
        <source>Avanzamento</source>
        <translation>Progress</translation>
    </message>
</context>
<context>
    <name>tarvel4::JobReports</name>
    <message>
        <source>Questa song non è nella tabella: %1</source>
        <translation>This song is not in the table: %1</translation>
    </message>
    <message>
        <source>La riga di questa song ora è nascosta: %1</source>
        <translation>The row of this song is hidden now: %1</translation>
    </message>
</context>
<context>
    <name>tarvel4::ListenStrip</name>
    <message>
        <source>In ascolto: %1</source>
        <translation>Listening to: %1</translation>
    </message>
    <message>
        <source>Marker</source>
        <translation>Markers</translation>
    </message>
    <message>
        <source>Ascolta da un marker</source>
        <translation>Listen from a marker</translation>
    </message>
    <message>
        <source>Ferma</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>Ferma l&apos;ascolto (Spazio nella tabella)</source>
        <translation>Stop listening (Space in the table)</translation>
    </message>
    <message>
        <source>Posizione nella song</source>
        <translation>Position in the song</translation>
    </message>
</context>
<context>
    <name>tarvel4::Listening</name>
    <message>
        <source>Ferma l&apos;ascolto</source>
        <translation>S&amp;top listening</translation>
    </message>
    <message>
        <source>Ascolta</source>
        <translation>L&amp;isten</translation>
    </message>
    <message>
        <source>Ascolta da un marker</source>
        <translation>Listen from a &amp;marker</translation>
    </message>
    <message>
        <source>Questa song non ha marker</source>
        <translation>This song has no markers</translation>
    </message>
    <message>
        <source>Ascolto</source>
        <translation>Listening</translation>
    </message>
    <message>
        <source>Non è possibile ascoltare la song:</source>
        <translation>The song can&apos;t be listened to:</translation>
    </message>
</context>
<context>
    <name>tarvel4::MainWindow</name>
    <message>
        <source>Tarvel4 Soft</source>
        <translation>Tarvel4 Soft</translation>
    </message>
    <message>
        <source>Seleziona le basi musicali che desideri inserire nella memoria di Tarvel</source>
        <translation>Select the songs you want to put into Tarvel&apos;s memory</translation>
    </message>
    <message>
        <source>Sincronizza song con il
database K-Varo</source>
        <translation>Synchronise songs with
the K-Varo database</translation>
    </message>
    <message>
        <source>Trasferisci song nella
memoria di Tarvel</source>
        <translation>Transfer songs to
Tarvel&apos;s memory</translation>
    </message>
    <message>
        <source>Opzioni nascoste</source>
        <translation>Hidden options</translation>
    </message>
    <message>
        <source>Abilita log (riavvio necessario!)</source>
        <translation>Enable log (needs a restart!)</translation>
    </message>
    <message>
        <source>Cancella log ad ogni avvio</source>
        <translation>Clear log at every start</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <source>Add Marker</source>
        <translation>Add Marker</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Reload Stylesheet</source>
        <translation>Reload Stylesheet</translation>
    </message>
    <message>
        <source>Import again</source>
        <translation>Import again</translation>
    </message>
    <message>
        <source>Hide Debug</source>
        <translation>Hide Debug</translation>
    </message>
    <message>
        <source>Backup</source>
        <translation>Backup</translation>
    </message>
    <message>
        <source>Manual Dialog</source>
        <translation>Manual Dialog</translation>
    </message>
    <message>
        <source>File</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>Preferenze</source>
        <translation>&amp;Preferences</translation>
    </message>
    <message>
        <source>Lingua</source>
        <translation>&amp;Language</translation>
    </message>
    <message>
        <source>Messaggi Copyright</source>
        <translation>&amp;Copyright messages</translation>
    </message>
    <message>
        <source>Strumenti</source>
        <translation>&amp;Tools</translation>
    </message>
    <message>
        <source>Aiuto</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>Esci</source>
        <translation>&amp;Quit</translation>
    </message>
    <message>
        <source>Italiano</source>
        <translation>&amp;Italiano</translation>
    </message>
    <message>
        <source>English</source>
        <translation>&amp;English</translation>
    </message>
    <message>
        <source>Deutsch</source>
        <translation>&amp;Deutsch</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>No</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>Rigenera il database delle song</source>
        <translation>&amp;Rebuild the song database</translation>
    </message>
    <message>
        <source>Salva lista delle song</source>
        <translation>Save the song &amp;list</translation>
    </message>
    <message>
        <source>Aiuto Tarvel4 Soft</source>
        <translation>Tarvel4 Soft &amp;help</translation>
    </message>
    <message>
        <source>Informazioni</source>
        <translation>&amp;About</translation>
    </message>
    <message>
        <source>Informazioni su QT</source>
        <translation>About &amp;QT</translation>
    </message>
    <message>
        <source>Ctrl+O</source>
        <translation>Ctrl+O</translation>
    </message>
    <message>
        <source>Annulla l&apos;ultima modifica...</source>
        <translation>&amp;Undo the last change...</translation>
    </message>
    <message>
        <source>Modifica più song...</source>
        <translation>&amp;Edit several songs...</translation>
    </message>
    <message>
        <source>Importa una cartella...</source>
        <translation>&amp;Import a folder...</translation>
    </message>
    <message>
        <source>Mostra l&apos;ultimo resoconto</source>
        <translation>&amp;Show the last report</translation>
    </message>
    <message>
        <source>Cerca nelle song</source>
        <translation>Search the songs</translation>
    </message>
    <message>
        <source>Song da mostrare</source>
        <translation>Songs to show</translation>
    </message>
    <message>
        <source>Song</source>
        <translation>Songs</translation>
    </message>
    <message>
        <source>Anteprima della sincronizzazione...</source>
        <translation>&amp;Preview of the synchronisation...</translation>
    </message>
</context>
<context>
    <name>tarvel4::NoCopyrightDialog</name>
    <message>
        <source>Richiesta conferma</source>
        <translation>Confirmation</translation>
    </message>
    <message>
        <source>Il file:</source>
        <translation>The file:</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Non è stato pubblicato da K-Varo. Si vuole procedere comunque con le modifiche?</source>
        <translation>It was not published by K-Varo. Change it all the same?</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>Si tutti</source>
        <translation>Yes to &amp;all</translation>
    </message>
    <message>
        <source>No</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>No tutti</source>
        <translation>N&amp;o to all</translation>
    </message>
    <message>
        <source>Da copiare:</source>
        <translation>To be copied:</translation>
    </message>
    <message>
        <source>Già presente:</source>
        <translation>Already there:</translation>
    </message>
</context>
<context>
    <name>tarvel4::PreviewDialog</name>
    <message>
        <source>Anteprima della sincronizzazione</source>
        <translation>Preview of the synchronisation</translation>
    </message>
    <message>
        <source>Quali song elencare</source>
        <translation>Which songs to list</translation>
    </message>
    <message>
        <source>Che cosa cambierebbe</source>
        <translation>What would change</translation>
    </message>
    <message>
        <source>Finora non è stato scritto nulla.</source>
        <translation>Nothing has been written so far.</translation>
    </message>
    <message>
        <source>Sincronizza...</source>
        <translation>&amp;Synchronise...</translation>
    </message>
    <message>
        <source>Chiudi</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>Torna alla domanda</source>
        <translation>&amp;Back to the question</translation>
    </message>
</context>
<context>
    <name>tarvel4::PreviewModel</name>
    <message>
        <source>Nome file</source>
        <translation>File name</translation>
    </message>
    <message>
        <source>Esito</source>
        <translation>Outcome</translation>
    </message>
    <message>
        <source>Campo</source>
        <translation>Field</translation>
    </message>
    <message>
        <source>Adesso</source>
        <translation>Now</translation>
    </message>
    <message>
        <source>Dopo</source>
        <translation>Afterwards</translation>
    </message>
</context>
<context>
    <name>tarvel4::ProceedDialog</name>
    <message>
        <source>Riassunto importazione</source>
        <translation>Import summary</translation>
    </message>
    <message>
        <source>Si vuole procedere alla sincronizzazione automatica con il database?</source>
        <translation>Synchronise automatically with the database now?</translation>
    </message>
    <message>
        <source>Non mostrare più messaggi sul copyright</source>
        <translation>Show no more messages about &amp;copyright</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>No</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>Sono stati esaminti %1 files, trovate %2 songs di cui %3 di (c)K-Varo</source>
        <translation>%1 files were examined, %2 songs found, %3 of them (c)K-Varo</translation>
    </message>
    <message>
        <source>Mostra i file non letti</source>
        <translation>&amp;Show the files that were not read</translation>
    </message>
    <message>
        <source>File non letti</source>
        <translation>Files that were not read</translation>
    </message>
</context>
<context>
    <name>tarvel4::ProgressDialog</name>
    <message>
        <source>Avanzamento</source>
        <translation>Progress</translation>
    </message>
</context>
<context>
    <name>tarvel4::ReportModel</name>
    <message>
        <source>Esito</source>
        <translation>Outcome</translation>
    </message>
    <message>
        <source>Nome file</source>
        <translation>File name</translation>
    </message>
    <message>
        <source>Dettagli</source>
        <translation>Details</translation>
    </message>
</context>
<context>
    <name>tarvel4::ReportPanel</name>
    <message>
        <source>Resoconto dell&apos;ultimo lavoro</source>
        <translation>Report of the last job</translation>
    </message>
    <message>
        <source>Quali song elencare</source>
        <translation>Which songs to list</translation>
    </message>
    <message>
        <source>Quali song del resoconto elencare</source>
        <translation>Which songs of the report to list</translation>
    </message>
    <message>
        <source>Salva come testo...</source>
        <translation>Sa&amp;ve as text...</translation>
    </message>
    <message>
        <source>Salva il resoconto come testo</source>
        <translation>Save the report as text</translation>
    </message>
    <message>
        <source>Chiudi</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>Chiudi il resoconto (Esc)</source>
        <translation>Close the report (Esc)</translation>
    </message>
    <message>
        <source>Chiudi il resoconto</source>
        <translation>Close the report</translation>
    </message>
    <message>
        <source>Song del resoconto</source>
        <translation>Songs of the report</translation>
    </message>
    <message>
        <source>Invio porta alla riga della song</source>
        <translation>Enter leads to the row of the song</translation>
    </message>
    <message>
        <source>resoconto</source>
        <translation>report</translation>
    </message>
    <message>
        <source>Testo (*.txt)</source>
        <translation>Text (*.txt)</translation>
    </message>
    <message>
        <source>Salvato in %1</source>
        <translation>Saved as %1</translation>
    </message>
    <message>
        <source>Il resoconto non è stato salvato.</source>
        <translation>The report was not saved.</translation>
    </message>
</context>
<context>
    <name>tarvel4::SongSearch</name>
    <message>
        <source>Cerca nelle song (%1)</source>
        <translation>Search the songs (%1)</translation>
    </message>
    <message>
        <source>Tutte le song</source>
        <translation>All songs</translation>
    </message>
    <message>
        <source>Aggiornate</source>
        <translation>Updated</translation>
    </message>
    <message>
        <source>Modificate a mano</source>
        <translation>Edited by hand</translation>
    </message>
    <message>
        <source>Non aggiornate</source>
        <translation>Not updated</translation>
    </message>
    <message>
        <source>Non riuscite</source>
        <translation>Failed</translation>
    </message>
    <message>
        <source>Qui compaiono le tue song: sceglile con il pulsante in alto a sinistra.</source>
        <translation>Your songs appear here: choose them with the button at the top left.</translation>
    </message>
    <message>
        <source>Nessuna song corrisponde alla ricerca.</source>
        <translation>No song matches the search.</translation>
    </message>
    <message>
        <source>1 song</source>
        <translation>1 song</translation>
    </message>
    <message>
        <source>%1 song</source>
        <translation>%1 songs</translation>
    </message>
    <message>
        <source>1 mostrata</source>
        <translation>1 shown</translation>
    </message>
    <message>
        <source>%1 mostrate</source>
        <translation>%1 shown</translation>
    </message>
    <message>
        <source>1 aggiornata</source>
        <translation>1 updated</translation>
    </message>
    <message>
        <source>%1 aggiornate</source>
        <translation>%1 updated</translation>
    </message>
    <message>
        <source>1 modificata a mano</source>
        <translation>1 edited by hand</translation>
    </message>
    <message>
        <source>%1 modificate a mano</source>
        <translation>%1 edited by hand</translation>
    </message>
    <message>
        <source>1 non aggiornata</source>
        <translation>1 not updated</translation>
    </message>
    <message>
        <source>%1 non aggiornate</source>
        <translation>%1 not updated</translation>
    </message>
    <message>
        <source>1 non riuscita</source>
        <translation>1 failed</translation>
    </message>
    <message>
        <source>%1 non riuscite</source>
        <translation>%1 failed</translation>
    </message>
    <message>
        <source>. Anche quelle nascoste vengono sincronizzate.</source>
        <translation>. Hidden ones are synchronised, too.</translation>
    </message>
    <message>
        <source>Già complete</source>
        <translation>Already complete</translation>
    </message>
    <message>
        <source>1 già completa</source>
        <translation>1 already complete</translation>
    </message>
    <message>
        <source>%1 già complete</source>
        <translation>%1 already complete</translation>
    </message>
</context>
<context>
    <name>tarvel4::SongsListDialog</name>
    <message>
        <source>Save song list</source>
        <translation>Save song list</translation>
    </message>
    <message>
        <source>CF/USB:</source>
        <translation>CF/&amp;USB:</translation>
    </message>
    <message>
        <source>File:</source>
        <translation>&amp;File:</translation>
    </message>
    <message>
        <source>Ordina per:</source>
        <translation>Sort b&amp;y:</translation>
    </message>
    <message>
        <source>Titolo</source>
        <translation>Title</translation>
    </message>
    <message>
        <source>Artista</source>
        <translation>Artist</translation>
    </message>
    <message>
        <source>Salva</source>
        <translation>&amp;Save</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>E&amp;xit</translation>
    </message>
    <message>
        <source>Scegli cartella</source>
        <translation>Choose a folder</translation>
    </message>
    <message>
        <source>Scegli nome del file</source>
        <translation>Choose the file name</translation>
    </message>
    <message>
        <source>File (*.csv)</source>
        <translation>File (*.csv)</translation>
    </message>
    <message>
        <source>Salva lista song</source>
        <translation>Save song list</translation>
    </message>
    <message>
        <source>Il percorso selezionato non esiste</source>
        <translation>The chosen path does not exist</translation>
    </message>
    <message>
        <source>Il percorso di destinazione non esiste</source>
        <translation>The destination path does not exist</translation>
    </message>
    <message>
        <source>Operazione completata</source>
        <translation>Operation completed</translation>
    </message>
    <message>
        <source>Impossibile proseguire, la memoria non è preparata per Tarvel</source>
        <translation>Cannot go on: the memory is not prepared for Tarvel</translation>
    </message>
    <message>
        <source>Errore durante la creazione del file</source>
        <translation>The file could not be created</translation>
    </message>
    <message>
        <source>Il file esiste già, vuoi sostituirlo?</source>
        <translation>The file already exists. Do you want to replace it?</translation>
    </message>
    <message>
        <source>Browse</source>
        <comment>memory</comment>
        <translation>&amp;Browse</translation>
    </message>
    <message>
        <source>Browse</source>
        <comment>list</comment>
        <translation>Bro&amp;wse</translation>
    </message>
    <message>
        <source>Sfoglia, cartella della memoria</source>
        <translation>Browse, folder of the memory</translation>
    </message>
    <message>
        <source>Sfoglia, file della lista</source>
        <translation>Browse, file of the list</translation>
    </message>
    <message>
        <source>Avanzamento</source>
        <translation>Progress</translation>
    </message>
</context>
<context>
    <name>tarvel4::SortMenu</name>
    <message>
        <source>Ordina per</source>
        <translation>Sort &amp;by</translation>
    </message>
    <message>
        <source>Crescente</source>
        <translation>Ascending</translation>
    </message>
    <message>
        <source>Decrescente</source>
        <translation>Descending</translation>
    </message>
</context>
<context>
    <name>tarvel4::UserSongsRelTableModel</name>
    <message>
        <source>Num</source>
        <translation>Num</translation>
    </message>
    <message>
        <source>Formato</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Titolo</source>
        <translation>Title</translation>
    </message>
    <message>
        <source>Artista</source>
        <translation>Artist</translation>
    </message>
    <message>
        <source>Genere</source>
        <translation>Genre</translation>
    </message>
    <message>
        <source>Autore</source>
        <translation>Author</translation>
    </message>
    <message>
        <source>Durata</source>
        <translation>Length</translation>
    </message>
    <message>
        <source>Bpm</source>
        <translation>Bpm</translation>
    </message>
    <message>
        <source>Tonalita&apos;</source>
        <translation>Key</translation>
    </message>
    <message>
        <source>Nome file</source>
        <translation>File name</translation>
    </message>
    <message>
        <source>Aggiornata dal database K-Varo</source>
        <translation>Updated from the K-Varo database</translation>
    </message>
    <message>
        <source>Modificata a mano</source>
        <translation>Edited by hand</translation>
    </message>
    <message>
        <source>Non aggiornata</source>
        <translation>Not updated</translation>
    </message>
    <message>
        <source>Non riuscita</source>
        <translation>Failed</translation>
    </message>
</context>
</TS>

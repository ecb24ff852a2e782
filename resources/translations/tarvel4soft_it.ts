<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it_IT" sourcelanguage="it_IT">
<context>
    <name>Cli</name>
    <message>
        <source>opzione sconosciuta: %1</source>
        <translation>opzione sconosciuta: %1</translation>
    </message>
    <message>
        <source>l&apos;opzione --%1 non prende valori</source>
        <translation>l&apos;opzione --%1 non prende valori</translation>
    </message>
    <message>
        <source>manca il valore dell&apos;opzione --%1</source>
        <translation>manca il valore dell&apos;opzione --%1</translation>
    </message>
    <message>
        <source>il valore dell&apos;opzione --%1 non è UTF-8 valido</source>
        <translation>il valore dell&apos;opzione --%1 non è UTF-8 valido</translation>
    </message>
    <message>
        <source>il valore dell&apos;opzione --%1 è uno di: %2</source>
        <translation>il valore dell&apos;opzione --%1 è uno di: %2</translation>
    </message>
    <message>
        <source>%1: il nome non è UTF-8 valido e non può essere aperto</source>
        <translation>%1: il nome non è UTF-8 valido e non può essere aperto</translation>
    </message>
    <message>
        <source>%1: non è una cartella</source>
        <translation>%1: non è una cartella</translation>
    </message>
    <message>
        <source>%1 e %2: hanno lo stesso nome, il backup non può contenerli entrambi</source>
        <translation>%1 e %2: hanno lo stesso nome, il backup non può contenerli entrambi</translation>
    </message>
    <message>
        <source>manca --to DIR</source>
        <translation>manca --to DIR</translation>
    </message>
    <message>
        <source>Copia le song in una nuova cartella di backup.</source>
        <translation>Copia le song in una nuova cartella di backup.</translation>
    </message>
    <message>
        <source>cartella che riceve la cartella di backup (necessaria)</source>
        <translation>cartella che riceve la cartella di backup (necessaria)</translation>
    </message>
    <message>
        <source>catalogue vuole una sola opzione tra --name, --title, --genres e --artists</source>
        <translation>catalogue vuole una sola opzione tra --name, --title, --genres e --artists</translation>
    </message>
    <message>
        <source>il catalogo non lo contiene, o non una volta sola</source>
        <translation>il catalogo non lo contiene, o non una volta sola</translation>
    </message>
    <message>
        <source>Cerca nel catalogo.</source>
        <translation>Cerca nel catalogo.</translation>
    </message>
    <message>
        <source>la song con questo nome di file</source>
        <translation>la song con questo nome di file</translation>
    </message>
    <message>
        <source>la sola song con questo titolo</source>
        <translation>la sola song con questo titolo</translation>
    </message>
    <message>
        <source>i generi</source>
        <translation>i generi</translation>
    </message>
    <message>
        <source>gli interpreti</source>
        <translation>gli interpreti</translation>
    </message>
    <message>
        <source>cerca le song anche nelle cartelle e nelle loro sottocartelle</source>
        <translation>cerca le song anche nelle cartelle e nelle loro sottocartelle</translation>
    </message>
    <message>
        <source>non è stato fatto nulla; --help spiega l&apos;uso</source>
        <translation>non è stato fatto nulla; --help spiega l&apos;uso</translation>
    </message>
    <message>
        <source>%1: non può essere copiato</source>
        <translation>%1: non può essere copiato</translation>
    </message>
    <message>
        <source>--title e --title-from-name si escludono</source>
        <translation>--title e --title-from-name si escludono</translation>
    </message>
    <message>
        <source>tonalità sconosciuta: %1</source>
        <translation>tonalità sconosciuta: %1</translation>
    </message>
    <message>
        <source>--length vuole un numero di secondi</source>
        <translation>--length vuole un numero di secondi</translation>
    </message>
    <message>
        <source>--bpm vuole un numero</source>
        <translation>--bpm vuole un numero</translation>
    </message>
    <message>
        <source>--add-marker vuole BATTUTA:TESTO, con una battuta da 1 a 65535</source>
        <translation>--add-marker vuole BATTUTA:TESTO, con una battuta da 1 a 65535</translation>
    </message>
    <message>
        <source>non c&apos;è nulla da modificare</source>
        <translation>non c&apos;è nulla da modificare</translation>
    </message>
    <message>
        <source>Modifica...</source>
        <translation>Modifica...</translation>
    </message>
    <message>
        <source>Corregge i dati delle song a mano.</source>
        <translation>Corregge i dati delle song a mano.</translation>
    </message>
    <message>
        <source>titolo</source>
        <translation>titolo</translation>
    </message>
    <message>
        <source>interprete</source>
        <translation>interprete</translation>
    </message>
    <message>
        <source>genere musicale</source>
        <translation>genere musicale</translation>
    </message>
    <message>
        <source>autore</source>
        <translation>autore</translation>
    </message>
    <message>
        <source>durata in secondi</source>
        <translation>durata in secondi</translation>
    </message>
    <message>
        <source>battiti al minuto</source>
        <translation>battiti al minuto</translation>
    </message>
    <message>
        <source>tonalità, come Bb oppure A-</source>
        <translation>tonalità, come Bb oppure A-</translation>
    </message>
    <message>
        <source>prende il titolo dal nome del file</source>
        <translation>prende il titolo dal nome del file</translation>
    </message>
    <message>
        <source>aggiunge un marker; può essere ripetuta</source>
        <translation>aggiunge un marker; può essere ripetuta</translation>
    </message>
    <message>
        <source>%1: esiste già</source>
        <translation>%1: esiste già</translation>
    </message>
    <message>
        <source>%1: non è una song .mf3, .mf4 o .mf5</source>
        <translation>%1: non è una song .mf3, .mf4 o .mf5</translation>
    </message>
    <message>
        <source>%1: non può essere scritto</source>
        <translation>%1: non può essere scritto</translation>
    </message>
    <message>
        <source>Scrive come file .mid la parte MIDI di una song MFx.</source>
        <translation>Scrive come file .mid la parte MIDI di una song MFx.</translation>
    </message>
    <message>
        <source>file da scrivere (accanto alla song, con suffisso .mid)</source>
        <translation>file da scrivere (accanto alla song, con suffisso .mid)</translation>
    </message>
    <message>
        <source>Indice...</source>
        <translation>Indice...</translation>
    </message>
    <message>
        <source>%1: l&apos;indice non è stato scritto</source>
        <translation>%1: l&apos;indice non è stato scritto</translation>
    </message>
    <message>
        <source>%1: la memoria non è preparata</source>
        <translation>%1: la memoria non è preparata</translation>
    </message>
    <message>
        <source>index vuole update, rebuild, verify oppure delete</source>
        <translation>index vuole update, rebuild, verify oppure delete</translation>
    </message>
    <message>
        <source>%1: l&apos;indice non può essere tolto</source>
        <translation>%1: l&apos;indice non può essere tolto</translation>
    </message>
    <message>
        <source>Aggiorna, rifà, controlla o toglie l&apos;indice di una memoria.</source>
        <translation>Aggiorna, rifà, controlla o toglie l&apos;indice di una memoria.</translation>
    </message>
    <message>
        <source>Lettura...</source>
        <translation>Lettura...</translation>
    </message>
    <message>
        <source>Mostra i dati di ogni song.</source>
        <translation>Mostra i dati di ogni song.</translation>
    </message>
    <message>
        <source>la lista non può essere scritta</source>
        <translation>la lista non può essere scritta</translation>
    </message>
    <message>
        <source>Scrive la lista delle song di una memoria preparata.</source>
        <translation>Scrive la lista delle song di una memoria preparata.</translation>
    </message>
    <message>
        <source>ordine della lista (title)</source>
        <translation>ordine della lista (title)</translation>
    </message>
    <message>
        <source>file da scrivere, al posto dell&apos;uscita standard</source>
        <translation>file da scrivere, al posto dell&apos;uscita standard</translation>
    </message>
    <message>
        <source>il catalogo non può essere letto</source>
        <translation>il catalogo non può essere letto</translation>
    </message>
    <message>
        <source>tutto fatto</source>
        <translation>tutto fatto</translation>
    </message>
    <message>
        <source>finito, ma una song è illeggibile, non trovata, rifiutata o fallita</source>
        <translation>finito, ma una song è illeggibile, non trovata, rifiutata o fallita</translation>
    </message>
    <message>
        <source>uso errato, nulla di fatto</source>
        <translation>uso errato, nulla di fatto</translation>
    </message>
    <message>
        <source>il lavoro non può essere fatto</source>
        <translation>il lavoro non può essere fatto</translation>
    </message>
    <message>
        <source>interrotto prima della song successiva</source>
        <translation>interrotto prima della song successiva</translation>
    </message>
    <message>
        <source>catalogo SQLite da usare al posto di quello incorporato</source>
        <translation>catalogo SQLite da usare al posto di quello incorporato</translation>
    </message>
    <message>
        <source>scrive i dati come JSON, un oggetto per riga</source>
        <translation>scrive i dati come JSON, un oggetto per riga</translation>
    </message>
    <message>
        <source>scrive il log in log.txt nella cartella corrente</source>
        <translation>scrive il log in log.txt nella cartella corrente</translation>
    </message>
    <message>
        <source>non mostra l&apos;avanzamento</source>
        <translation>non mostra l&apos;avanzamento</translation>
    </message>
    <message>
        <source>mostra questo aiuto (anche -h)</source>
        <translation>mostra questo aiuto (anche -h)</translation>
    </message>
    <message>
        <source>mostra la versione</source>
        <translation>mostra la versione</translation>
    </message>
    <message>
        <source>i dati non possono essere scritti</source>
        <translation>i dati non possono essere scritti</translation>
    </message>
    <message>
        <source>comando sconosciuto: %1</source>
        <translation>comando sconosciuto: %1</translation>
    </message>
    <message>
        <source>manca il comando</source>
        <translation>manca il comando</translation>
    </message>
    <message>
        <source>uso: %1</source>
        <translation>uso: %1</translation>
    </message>
    <message>
        <source>Uso: %1</source>
        <translation>Uso: %1</translation>
    </message>
    <message>
        <source>Comandi:</source>
        <translation>Comandi:</translation>
    </message>
    <message>
        <source>Opzioni di ogni comando:</source>
        <translation>Opzioni di ogni comando:</translation>
    </message>
    <message>
        <source>Stato d&apos;uscita:</source>
        <translation>Stato d&apos;uscita:</translation>
    </message>
    <message>
        <source>Opzioni:</source>
        <translation>Opzioni:</translation>
    </message>
    <message>
        <source>%1 di %2</source>
        <translation>%1 di %2</translation>
    </message>
    <message>
        <source>, %1/s, ancora %2</source>
        <translation>, %1/s, ancora %2</translation>
    </message>
    <message>
        <source>%1: non esiste</source>
        <translation>%1: non esiste</translation>
    </message>
    <message>
        <source>%1: è una cartella (senza --recursive non viene letta)</source>
        <translation>%1: è una cartella (senza --recursive non viene letta)</translation>
    </message>
    <message>
        <source>%1: la cartella non può essere letta</source>
        <translation>%1: la cartella non può essere letta</translation>
    </message>
    <message>
        <source>%1: non può essere letto, viene saltato</source>
        <translation>%1: non può essere letto, viene saltato</translation>
    </message>
    <message>
        <source>%1: non può essere salvato, resta com&apos;era</source>
        <translation>%1: non può essere salvato, resta com&apos;era</translation>
    </message>
    <message>
        <source>le song non possono essere elencate</source>
        <translation>le song non possono essere elencate</translation>
    </message>
    <message>
        <source>--backup e --no-backup si escludono</source>
        <translation>--backup e --no-backup si escludono</translation>
    </message>
    <message>
        <source>manca --backup DIR oppure --no-backup</source>
        <translation>manca --backup DIR oppure --no-backup</translation>
    </message>
    <message>
        <source>--unpublished ask vuole un terminale</source>
        <translation>--unpublished ask vuole un terminale</translation>
    </message>
    <message>
        <source>Completa i dati delle song con quelli del catalogo.</source>
        <translation>Completa i dati delle song con quelli del catalogo.</translation>
    </message>
    <message>
        <source>prima copia le song in una nuova cartella di DIR</source>
        <translation>prima copia le song in una nuova cartella di DIR</translation>
    </message>
    <message>
        <source>non fa il backup (una delle due è necessaria)</source>
        <translation>non fa il backup (una delle due è necessaria)</translation>
    </message>
    <message>
        <source>se cambiare le song non pubblicate da K-Varo</source>
        <translation>se cambiare le song non pubblicate da K-Varo</translation>
    </message>
    <message>
        <source>mostra che cosa cambierebbe e non scrive nulla</source>
        <translation>mostra che cosa cambierebbe e non scrive nulla</translation>
    </message>
    <message>
        <source>%1: non è stato pubblicato da K-Varo. Si vuole procedere comunque con le modifiche?</source>
        <translation>%1: non è stato pubblicato da K-Varo. Si vuole procedere comunque con le modifiche?</translation>
    </message>
    <message>
        <source>%1: esiste già, vuoi sostituirlo?</source>
        <translation>%1: esiste già, vuoi sostituirlo?</translation>
    </message>
    <message>
        <source>[s] sì, [t] sì a tutti, [n] no, [o] no a tutti</source>
        <translation>[s] sì, [t] sì a tutti, [n] no, [o] no a tutti</translation>
    </message>
    <message>
        <source>--overwrite ask vuole un terminale</source>
        <translation>--overwrite ask vuole un terminale</translation>
    </message>
    <message>
        <source>%1: non si trova nella memoria %2</source>
        <translation>%1: non si trova nella memoria %2</translation>
    </message>
    <message>
        <source>Copia le song nella memoria e ne aggiorna l&apos;indice.</source>
        <translation>Copia le song nella memoria e ne aggiorna l&apos;indice.</translation>
    </message>
    <message>
        <source>cartella della memoria che riceve le song (necessaria)</source>
        <translation>cartella della memoria che riceve le song (necessaria)</translation>
    </message>
    <message>
        <source>cartella da prendere per la memoria, al posto del volume</source>
        <translation>cartella da prendere per la memoria, al posto del volume</translation>
    </message>
    <message>
        <source>se sostituire le song che esistono già</source>
        <translation>se sostituire le song che esistono già</translation>
    </message>
</context>
<context>
    <name>DeviceTransfer</name>
    <message>
        <source>Trasferimento</source>
        <translation>Trasferimento</translation>
    </message>
    <message>
        <source>Non è stato possibile copiare uno o più file</source>
        <translation>Non è stato possibile copiare uno o più file</translation>
    </message>
    <message>
        <source>Tutti i file sono stati copiati correttamente</source>
        <translation>Tutti i file sono stati copiati correttamente</translation>
    </message>
    <message>
        <source>Non è possibile copiare i file sul disco di sistema</source>
        <translation>Non è possibile copiare i file sul disco di sistema</translation>
    </message>
    <message>
        <source>Non è possibile copiare i file sulla cartella principale, creare o selezionare una sottocartella</source>
        <translation>Non è possibile copiare i file sulla cartella principale, creare o selezionare una sottocartella</translation>
    </message>
    <message>
        <source>Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST perchè sono riservate, selezionare un&apos;altra cartella</source>
        <translation>Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST perchè sono riservate, selezionare un&apos;altra cartella</translation>
    </message>
    <message>
        <source>Trasferimento file...</source>
        <translation>Trasferimento file...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>Interrompi</translation>
    </message>
    <message>
        <source>Aggiornamento</source>
        <translation>Aggiornamento</translation>
    </message>
    <message>
        <source>Aggiornamento database...</source>
        <translation>Aggiornamento database...</translation>
    </message>
</context>
<context>
    <name>Index</name>
    <message>
        <source>Impossibile leggere: </source>
        <translation>Impossibile leggere: </translation>
    </message>
    <message>
        <source>File non importato, path troppo lungo: </source>
        <translation>File non importato, path troppo lungo: </translation>
    </message>
</context>
<context>
    <name>IndexVerifier</name>
    <message>
        <source>Il file non si può leggere</source>
        <translation>Il file non si può leggere</translation>
    </message>
    <message>
        <source>Il record è incompleto</source>
        <translation>Il record è incompleto</translation>
    </message>
    <message>
        <source>Dopo il testo ci sono altri byte</source>
        <translation>Dopo il testo ci sono altri byte</translation>
    </message>
    <message>
        <source>Il numero %1 non è di nessuna song</source>
        <translation>Il numero %1 non è di nessuna song</translation>
    </message>
    <message>
        <source>Il numero %1 è usato due volte</source>
        <translation>Il numero %1 è usato due volte</translation>
    </message>
    <message>
        <source>Il numero %1 non c&apos;è</source>
        <translation>Il numero %1 non c&apos;è</translation>
    </message>
    <message>
        <source>Il numero %1 non è quello del record</source>
        <translation>Il numero %1 non è quello del record</translation>
    </message>
    <message>
        <source>Il percorso non è valido</source>
        <translation>Il percorso non è valido</translation>
    </message>
    <message>
        <source>La song non esiste: %1</source>
        <translation>La song non esiste: %1</translation>
    </message>
    <message>
        <source>Il percorso della song è %1</source>
        <translation>Il percorso della song è %1</translation>
    </message>
    <message>
        <source>La data o l&apos;ora non sono quelle della song: %1</source>
        <translation>La data o l&apos;ora non sono quelle della song: %1</translation>
    </message>
    <message>
        <source>La song non è nell&apos;indice: %1</source>
        <translation>La song non è nell&apos;indice: %1</translation>
    </message>
    <message>
        <source>I record sono %1 e non %2</source>
        <translation>I record sono %1 e non %2</translation>
    </message>
    <message>
        <source>Qui non sta questa song</source>
        <translation>Qui non sta questa song</translation>
    </message>
    <message>
        <source>Il titolo è vuoto</source>
        <translation>Il titolo è vuoto</translation>
    </message>
    <message>
        <source>Il titolo non è in ordine</source>
        <translation>Il titolo non è in ordine</translation>
    </message>
    <message>
        <source>L&apos;attributo %1 non è valido</source>
        <translation>L&apos;attributo %1 non è valido</translation>
    </message>
    <message>
        <source>Il primo record non è di un interprete</source>
        <translation>Il primo record non è di un interprete</translation>
    </message>
    <message>
        <source>L&apos;interprete non è in ordine</source>
        <translation>L&apos;interprete non è in ordine</translation>
    </message>
    <message>
        <source>Il gruppo precedente ha %1 song</source>
        <translation>Il gruppo precedente ha %1 song</translation>
    </message>
    <message>
        <source>Il gruppo ha %1 song</source>
        <translation>Il gruppo ha %1 song</translation>
    </message>
    <message>
        <source>Il gruppo è vuoto</source>
        <translation>Il gruppo è vuoto</translation>
    </message>
    <message>
        <source>L&apos;interprete ha già un gruppo</source>
        <translation>L&apos;interprete ha già un gruppo</translation>
    </message>
    <message>
        <source>Il record non è quello dei titoli</source>
        <translation>Il record non è quello dei titoli</translation>
    </message>
    <message>
        <source>Il file non è lungo %1 byte</source>
        <translation>Il file non è lungo %1 byte</translation>
    </message>
    <message>
        <source>La lettera &quot;%1&quot; non è al suo posto</source>
        <translation>La lettera &quot;%1&quot; non è al suo posto</translation>
    </message>
    <message>
        <source>I titoli sono %1</source>
        <translation>I titoli sono %1</translation>
    </message>
    <message>
        <source>Gli interpreti sono %1</source>
        <translation>Gli interpreti sono %1</translation>
    </message>
    <message>
        <source>Un numero riservato non è zero</source>
        <translation>Un numero riservato non è zero</translation>
    </message>
</context>
<context>
    <name>LibraryBackup</name>
    <message>
        <source>Backup</source>
        <translation>Backup</translation>
    </message>
    <message>
        <source>Backup eseguito correttamente</source>
        <translation>Backup eseguito correttamente</translation>
    </message>
    <message>
        <source>Eseguo backup dellla libreria...</source>
        <translation>Eseguo backup dellla libreria...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>Interrompi</translation>
    </message>
    <message>
        <source>Backup FALLITO !!!</source>
        <translation>Backup FALLITO !!!</translation>
    </message>
</context>
<context>
    <name>LibraryImport</name>
    <message>
        <source>Lettura file</source>
        <translation>Lettura file</translation>
    </message>
    <message>
        <source>Importo la libreria...</source>
        <translation>Importo la libreria...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>Interrompi</translation>
    </message>
</context>
<context>
    <name>LibraryUpdate</name>
    <message>
        <source>Aggiornamento file</source>
        <translation>Aggiornamento file</translation>
    </message>
    <message>
        <source>Aggiorno la libreria...</source>
        <translation>Aggiorno la libreria...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>Interrompi</translation>
    </message>
</context>
<context>
    <name>RowEditor</name>
    <message>
        <source>Aggiornamento file</source>
        <translation>Aggiornamento file</translation>
    </message>
    <message>
        <source>Aggiorno la libreria...</source>
        <translation>Aggiorno la libreria...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>Interrompi</translation>
    </message>
</context>
<context>
    <name>SongListWriter</name>
    <message>
        <source>TITOLO</source>
        <translation>TITOLO</translation>
    </message>
    <message>
        <source>ARTISTA</source>
        <translation>ARTISTA</translation>
    </message>
    <message>
        <source>FILE</source>
        <translation>FILE</translation>
    </message>
</context>
<context>
    <name>UserSongsRelTableModel</name>
    <message>
        <source>Num</source>
        <translation>Num</translation>
    </message>
    <message>
        <source>Formato</source>
        <translation>Formato</translation>
    </message>
    <message>
        <source>Titolo</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>Artista</source>
        <translation>Artista</translation>
    </message>
    <message>
        <source>Genere</source>
        <translation>Genere</translation>
    </message>
    <message>
        <source>Autore</source>
        <translation>Autore</translation>
    </message>
    <message>
        <source>Durata</source>
        <translation>Durata</translation>
    </message>
    <message>
        <source>Bpm</source>
        <translation>Bpm</translation>
    </message>
    <message>
        <source>Tonalita&apos;</source>
        <translation>Tonalita&apos;</translation>
    </message>
    <message>
        <source>Nome file</source>
        <translation>Nome file</translation>
    </message>
</context>
</TS>

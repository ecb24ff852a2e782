<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it_IT" sourcelanguage="it_IT">
<context>
    <name>BackupJob</name>
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
        <translation>&amp;Interrompi</translation>
    </message>
    <message>
        <source>Backup FALLITO !!!</source>
        <translation>Backup FALLITO !!!</translation>
    </message>
    <message>
        <source>%1: qui resta il backup incompleto</source>
        <translation>%1: qui resta il backup incompleto</translation>
    </message>
</context>
<context>
    <name>Cli</name>
    <message>
        <source>opzione sconosciuta: %1</source>
        <translation>opzione sconosciuta: %1</translation>
    </message>
    <message>
        <source>opzione ambigua: %1</source>
        <translation>opzione ambigua: %1</translation>
    </message>
    <message>
        <source>l'opzione --%1 non prende valori</source>
        <translation>l'opzione --%1 non prende valori</translation>
    </message>
    <message>
        <source>manca il valore dell'opzione --%1</source>
        <translation>manca il valore dell'opzione --%1</translation>
    </message>
    <message>
        <source>il valore dell'opzione --%1 non è UTF-8 valido</source>
        <translation>il valore dell'opzione --%1 non è UTF-8 valido</translation>
    </message>
    <message>
        <source>il valore dell'opzione --%1 è uno di: %2</source>
        <translation>il valore dell'opzione --%1 è uno di: %2</translation>
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
        <source>non è stato fatto nulla; --help spiega l'uso</source>
        <translation>non è stato fatto nulla; --help spiega l'uso</translation>
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
        <source>non c'è nulla da modificare</source>
        <translation>non c'è nulla da modificare</translation>
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
        <source>%1: l'indice non è stato scritto</source>
        <translation>%1: l'indice non è stato scritto</translation>
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
        <source>Aggiorna, rifà, controlla o toglie l'indice di una memoria.</source>
        <translation>Aggiorna, rifà, controlla o toglie l'indice di una memoria.</translation>
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
        <source>Scrive la lista delle song di una memoria preparata.</source>
        <translation>Scrive la lista delle song di una memoria preparata.</translation>
    </message>
    <message>
        <source>ordine della lista (title)</source>
        <translation>ordine della lista (title)</translation>
    </message>
    <message>
        <source>file da scrivere, al posto dell'uscita standard</source>
        <translation>file da scrivere, al posto dell'uscita standard</translation>
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
        <source>finito, ma una song è illeggibile, non trovata, rifiutata o fallita, o un indice ha errori</source>
        <translation>finito, ma una song è illeggibile, non trovata, rifiutata o fallita, o un indice ha errori</translation>
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
        <source>non mostra l'avanzamento</source>
        <translation>non mostra l'avanzamento</translation>
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
        <source>Stato d'uscita:</source>
        <translation>Stato d'uscita:</translation>
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
        <source>%1: non può essere letto, viene saltato</source>
        <translation>%1: non può essere letto, viene saltato</translation>
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
        <source>Copia le song nella memoria e ne aggiorna l'indice.</source>
        <translation>Copia le song nella memoria e ne aggiorna l'indice.</translation>
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
    <message>
        <source>%1: appartiene all'indice di una memoria, non può essere sovrascritto</source>
        <translation>%1: appartiene all'indice di una memoria, non può essere sovrascritto</translation>
    </message>
    <message>
        <source>%1: interrotto, la memoria è preparata</source>
        <translation>%1: interrotto, la memoria è preparata</translation>
    </message>
    <message>
        <source>%1: interrotto, la memoria non è preparata</source>
        <translation>%1: interrotto, la memoria non è preparata</translation>
    </message>
    <message>
        <source>un'interruzione lo ha lasciato come %1</source>
        <translation>un'interruzione lo ha lasciato come %1</translation>
    </message>
    <message>
        <source>è una cartella (senza --recursive non viene letta)</source>
        <translation>è una cartella (senza --recursive non viene letta)</translation>
    </message>
    <message>
        <source>la cartella non può essere letta</source>
        <translation>la cartella non può essere letta</translation>
    </message>
    <message>
        <source>%1: non è un catalogo, o è danneggiato</source>
        <translation>%1: non è un catalogo, o è danneggiato</translation>
    </message>
    <message>
        <source>%1: qui resta il backup incompleto</source>
        <translation>%1: qui resta il backup incompleto</translation>
    </message>
    <message>
        <source>altri PATH, uno per riga (-: dall'ingresso standard)</source>
        <translation>altri PATH, uno per riga (-: dall'ingresso standard)</translation>
    </message>
    <message>
        <source>in FILE ogni PATH finisce con un byte zero</source>
        <translation>in FILE ogni PATH finisce con un byte zero</translation>
    </message>
    <message>
        <source>history vuole clear oppure nulla</source>
        <translation>history vuole clear oppure nulla</translation>
    </message>
    <message>
        <source>--limit vuole un numero</source>
        <translation>--limit vuole un numero</translation>
    </message>
    <message>
        <source>Elenca le ultime modifiche, o le dimentica.</source>
        <translation>Elenca le ultime modifiche, o le dimentica.</translation>
    </message>
    <message>
        <source>solo le ultime N</source>
        <translation>solo le ultime N</translation>
    </message>
    <message>
        <source>nessuno legge più i dati (| head)</source>
        <translation>nessuno legge più i dati (| head)</translation>
    </message>
    <message>
        <source>Esempi:</source>
        <translation>Esempi:</translation>
    </message>
    <message>
        <source>--null vuole --files-from FILE</source>
        <translation>--null vuole --files-from FILE</translation>
    </message>
    <message>
        <source>il backup non contiene una song con questo nome</source>
        <translation>il backup non contiene una song con questo nome</translation>
    </message>
    <message>
        <source>non c'è nulla da annullare</source>
        <translation>non c'è nulla da annullare</translation>
    </message>
    <message>
        <source>nessuna modifica ha il numero %1</source>
        <translation>nessuna modifica ha il numero %1</translation>
    </message>
    <message>
        <source>manca --from BACKUP</source>
        <translation>manca --from BACKUP</translation>
    </message>
    <message>
        <source>Annulla l'ultima modifica, o quella che history chiama RUN, byte per byte.</source>
        <translation>Annulla l'ultima modifica, o quella che history chiama RUN, byte per byte.</translation>
    </message>
    <message>
        <source>Rimette le song come sono in un backup.</source>
        <translation>Rimette le song come sono in un backup.</translation>
    </message>
    <message>
        <source>cartella del backup (necessaria)</source>
        <translation>cartella del backup (necessaria)</translation>
    </message>
    <message>
        <source>Adegua l'indice alle song che ci sono.</source>
        <translation>Adegua l'indice alle song che ci sono.</translation>
    </message>
    <message>
        <source>Rifà da capo l'indice di tutte le song.</source>
        <translation>Rifà da capo l'indice di tutte le song.</translation>
    </message>
    <message>
        <source>Controlla l'indice, senza cambiarlo: una riga per ogni errore.</source>
        <translation>Controlla l'indice, senza cambiarlo: una riga per ogni errore.</translation>
    </message>
    <message>
        <source>Toglie l'indice; le song restano.</source>
        <translation>Toglie l'indice; le song restano.</translation>
    </message>
    <message>
        <source>Azioni:</source>
        <translation>Azioni:</translation>
    </message>
    <message>
        <source>dice che cosa è stato fatto di ogni file, e che errore ha dato il sistema (anche -v)</source>
        <translation>dice che cosa è stato fatto di ogni file, e che errore ha dato il sistema (anche -v)</translation>
    </message>
    <message>
        <source>il sistema ha rifiutato %1: %2 (errore %3)</source>
        <translation>il sistema ha rifiutato %1: %2 (errore %3)</translation>
    </message>
    <message>
        <source>esiste già, non copiata</source>
        <translation>esiste già, non copiata</translation>
    </message>
    <message>
        <source>copiata</source>
        <translation>copiata</translation>
    </message>
    <message>
        <source>salvata</source>
        <translation>salvata</translation>
    </message>
    <message>
        <source>scritto</source>
        <translation>scritto</translation>
    </message>
    <message>
        <source>esaminato</source>
        <translation>esaminato</translation>
    </message>
    <message>
        <source>ora non c'è alcun indice</source>
        <translation>ora non c'è alcun indice</translation>
    </message>
    <message>
        <source>letta</source>
        <translation>letta</translation>
    </message>
    <message>
        <source>il catalogo non la contiene</source>
        <translation>il catalogo non la contiene</translation>
    </message>
    <message>
        <source>non pubblicata da K-Varo, lasciata com'era</source>
        <translation>non pubblicata da K-Varo, lasciata com'era</translation>
    </message>
    <message>
        <source>da salvare</source>
        <translation>da salvare</translation>
    </message>
    <message>
        <source>da ripristinare</source>
        <translation>da ripristinare</translation>
    </message>
    <message>
        <source>ripristinata</source>
        <translation>ripristinata</translation>
    </message>
    <message>
        <source>--fields vuole nomi fra questi, separati da virgole: %1</source>
        <translation>--fields vuole nomi fra questi, separati da virgole: %1</translation>
    </message>
    <message>
        <source>solo questi dati di ogni song</source>
        <translation>solo questi dati di ogni song</translation>
    </message>
    <message>
        <source>scrive una tabella CSV, con i nomi nella prima riga</source>
        <translation>scrive una tabella CSV, con i nomi nella prima riga</translation>
    </message>
    <message>
        <source>--csv e --fields non vanno con --json</source>
        <translation>--csv e --fields non vanno con --json</translation>
    </message>
    <message>
        <source>completion vuole bash, zsh o fish</source>
        <translation>completion vuole bash, zsh o fish</translation>
    </message>
    <message>
        <source>Scrive lo script con cui quella shell completa una riga di comando.</source>
        <translation>Scrive lo script con cui quella shell completa una riga di comando.</translation>
    </message>
    <message>
        <source>un percorso vuoto non indica né un file né una cartella</source>
        <translation>un percorso vuoto non indica né un file né una cartella</translation>
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
        <translation>Uso: tarvel4soft [OPZIONE]... [FILE]...
Apre la finestra di Tarvel4 Soft e importa i file e le cartelle indicati.

  -h, --help   mostra questo aiuto
  --version    mostra la versione
  --           da qui in poi ci sono solo file

Per lavorare dal terminale, senza finestra: tarvel4soft-cli --help
</translation>
    </message>
    <message>
        <source>tarvel4soft: opzione sconosciuta: %1 (--help mostra quelle che ci sono)
</source>
        <translation>tarvel4soft: opzione sconosciuta: %1 (--help mostra quelle che ci sono)
</translation>
    </message>
    <message>
        <source>tarvel4soft: nessuno schermo raggiungibile, la finestra non si apre.
</source>
        <translation>tarvel4soft: nessuno schermo raggiungibile, la finestra non si apre.
</translation>
    </message>
</context>
<context>
    <name>EditCheck</name>
    <message>
        <source>in %1 song su %2 (%3): </source>
        <translation>in %1 song su %2 (%3): </translation>
    </message>
</context>
<context>
    <name>EditJob</name>
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
        <translation>&amp;Interrompi</translation>
    </message>
</context>
<context>
    <name>EditMany</name>
    <message>
        <source>Modifica più song</source>
        <translation>Modifica più song</translation>
    </message>
    <message>
        <source>La tabella non mostra nessuna song.</source>
        <translation>La tabella non mostra nessuna song.</translation>
    </message>
</context>
<context>
    <name>EjectOffer</name>
    <message>
        <source>Espelli</source>
        <translation>Espelli</translation>
    </message>
    <message>
        <source>Espulsione</source>
        <translation>Espulsione</translation>
    </message>
    <message>
        <source>La memoria è stata espulsa: ora la puoi togliere.</source>
        <translation>La memoria è stata espulsa: ora la puoi togliere.</translation>
    </message>
    <message>
        <source>La memoria è stata scollegata, quindi la puoi togliere, ma non è stata espulsa:</source>
        <translation>La memoria è stata scollegata, quindi la puoi togliere, ma non è stata espulsa:</translation>
    </message>
    <message>
        <source>Non è stato possibile espellere la memoria:</source>
        <translation>Non è stato possibile espellere la memoria:</translation>
    </message>
    <message>
        <source>Riprova</source>
        <translation>Riprova</translation>
    </message>
</context>
<context>
    <name>FieldCheck</name>
    <message>
        <source>occuperebbe %1 byte, più di %2: altri programmi non leggerebbero più la song</source>
        <translation>occuperebbe %1 byte, più di %2: altri programmi non leggerebbero più la song</translation>
    </message>
    <message>
        <source>il lettore mostrerà: %1</source>
        <translation>il lettore mostrerà: %1</translation>
    </message>
    <message>
        <source>ne resteranno %1 caratteri su %2</source>
        <translation>ne resteranno %1 caratteri su %2</translation>
    </message>
    <message>
        <source>caratteri che restano: %1</source>
        <translation>caratteri che restano: %1</translation>
    </message>
</context>
<context>
    <name>FieldTexts</name>
    <message>
        <source>Titolo</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>Interprete</source>
        <translation>Interprete</translation>
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
        <source>Tempo (BPM)</source>
        <translation>Tempo (BPM)</translation>
    </message>
    <message>
        <source>Tonalità</source>
        <translation>Tonalità</translation>
    </message>
    <message>
        <source>Pubblicata da K-Varo</source>
        <translation>Pubblicata da K-Varo</translation>
    </message>
    <message>
        <source>Marker</source>
        <translation>Marker</translation>
    </message>
    <message>
        <source>Nome lungo</source>
        <translation>Nome lungo</translation>
    </message>
    <message>
        <source>Indicatori MFx</source>
        <translation>Indicatori MFx</translation>
    </message>
    <message>
        <source>sì</source>
        <translation>sì</translation>
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
        <translation>%1 byte, %2</translation>
    </message>
    <message>
        <source>%1 (più recente)</source>
        <translation>%1 (più recente)</translation>
    </message>
</context>
<context>
    <name>FluidPlayer</name>
    <message>
        <source>i suoni in %1 non possono essere letti</source>
        <translation>i suoni in %1 non possono essere letti</translation>
    </message>
    <message>
        <source>la parte MIDI è danneggiata e non può essere suonata</source>
        <translation>la parte MIDI è danneggiata e non può essere suonata</translation>
    </message>
    <message>
        <source>nessuna uscita audio è disponibile</source>
        <translation>nessuna uscita audio è disponibile</translation>
    </message>
</context>
<context>
    <name>ImportJob</name>
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
        <translation>&amp;Interrompi</translation>
    </message>
</context>
<context>
    <name>IndexLoader</name>
    <message>
        <source>%1: l'ultimo record non è intero</source>
        <translation>%1: l'ultimo record non è intero</translation>
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
        <source>Il numero %1 non c'è</source>
        <translation>Il numero %1 non c'è</translation>
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
        <source>La data o l'ora non sono quelle della song: %1</source>
        <translation>La data o l'ora non sono quelle della song: %1</translation>
    </message>
    <message>
        <source>La song non è nell'indice: %1</source>
        <translation>La song non è nell'indice: %1</translation>
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
        <source>Il titolo non è in ordine</source>
        <translation>Il titolo non è in ordine</translation>
    </message>
    <message>
        <source>L'attributo %1 non è valido</source>
        <translation>L'attributo %1 non è valido</translation>
    </message>
    <message>
        <source>Il primo record non è di un interprete</source>
        <translation>Il primo record non è di un interprete</translation>
    </message>
    <message>
        <source>L'interprete non è in ordine</source>
        <translation>L'interprete non è in ordine</translation>
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
        <source>L'interprete ha già un gruppo</source>
        <translation>L'interprete ha già un gruppo</translation>
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
        <source>La lettera "%1" non è al suo posto</source>
        <translation>La lettera "%1" non è al suo posto</translation>
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
    <message>
        <source>Il testo è vuoto</source>
        <translation>Il testo è vuoto</translation>
    </message>
    <message>
        <source>Il testo non è in maiuscolo o ha spazi attorno</source>
        <translation>Il testo non è in maiuscolo o ha spazi attorno</translation>
    </message>
</context>
<context>
    <name>JobReport</name>
    <message>
        <source>non letta</source>
        <translation>non letta</translation>
    </message>
    <message>
        <source>non lette</source>
        <translation>non lette</translation>
    </message>
    <message>
        <source>con la grafica (.cdg) non copiata</source>
        <translation>con la grafica (.cdg) non copiata</translation>
    </message>
    <message>
        <source>problema della memoria</source>
        <translation>problema della memoria</translation>
    </message>
    <message>
        <source>problemi della memoria</source>
        <translation>problemi della memoria</translation>
    </message>
    <message>
        <source>non raggiunta</source>
        <translation>non raggiunta</translation>
    </message>
    <message>
        <source>non raggiunte</source>
        <translation>non raggiunte</translation>
    </message>
    <message>
        <source>non nel catalogo</source>
        <translation>non nel catalogo</translation>
    </message>
    <message>
        <source>non pubblicata da K-Varo</source>
        <translation>non pubblicata da K-Varo</translation>
    </message>
    <message>
        <source>non pubblicate da K-Varo</source>
        <translation>non pubblicate da K-Varo</translation>
    </message>
    <message>
        <source>da confermare</source>
        <translation>da confermare</translation>
    </message>
    <message>
        <source>già presente</source>
        <translation>già presente</translation>
    </message>
    <message>
        <source>già presenti</source>
        <translation>già presenti</translation>
    </message>
    <message>
        <source>sostituita</source>
        <translation>sostituita</translation>
    </message>
    <message>
        <source>sostituite</source>
        <translation>sostituite</translation>
    </message>
    <message>
        <source>aggiornata</source>
        <translation>aggiornata</translation>
    </message>
    <message>
        <source>aggiornate</source>
        <translation>aggiornate</translation>
    </message>
    <message>
        <source>corretta</source>
        <translation>corretta</translation>
    </message>
    <message>
        <source>corrette</source>
        <translation>corrette</translation>
    </message>
    <message>
        <source>tornata com'era</source>
        <translation>tornata com'era</translation>
    </message>
    <message>
        <source>tornate com'erano</source>
        <translation>tornate com'erano</translation>
    </message>
    <message>
        <source>copiata</source>
        <translation>copiata</translation>
    </message>
    <message>
        <source>copiate</source>
        <translation>copiate</translation>
    </message>
    <message>
        <source>importata</source>
        <translation>importata</translation>
    </message>
    <message>
        <source>importate</source>
        <translation>importate</translation>
    </message>
    <message>
        <source>già completa</source>
        <translation>già completa</translation>
    </message>
    <message>
        <source>già complete</source>
        <translation>già complete</translation>
    </message>
    <message>
        <source>il lavoro si è fermato prima</source>
        <translation>il lavoro si è fermato prima</translation>
    </message>
    <message>
        <source>lasciata com'era, come hai scelto</source>
        <translation>lasciata com'era, come hai scelto</translation>
    </message>
    <message>
        <source>non pubblicata da K-Varo: prima di cambiarla ti viene chiesto</source>
        <translation>non pubblicata da K-Varo: prima di cambiarla ti viene chiesto</translation>
    </message>
    <message>
        <source>il file che c'era già è rimasto, come hai scelto</source>
        <translation>il file che c'era già è rimasto, come hai scelto</translation>
    </message>
    <message>
        <source>un'altra song con lo stesso nome ha preso il suo posto</source>
        <translation>un'altra song con lo stesso nome ha preso il suo posto</translation>
    </message>
    <message>
        <source>il catalogo non aggiunge nulla</source>
        <translation>il catalogo non aggiunge nulla</translation>
    </message>
    <message>
        <source>Importazione</source>
        <translation>Importazione</translation>
    </message>
    <message>
        <source>Sincronizzazione</source>
        <translation>Sincronizzazione</translation>
    </message>
    <message>
        <source>Anteprima della sincronizzazione</source>
        <translation>Anteprima della sincronizzazione</translation>
    </message>
    <message>
        <source>Trasferimento</source>
        <translation>Trasferimento</translation>
    </message>
    <message>
        <source>Correzione</source>
        <translation>Correzione</translation>
    </message>
    <message>
        <source>Annullamento</source>
        <translation>Annullamento</translation>
    </message>
    <message>
        <source>nessuna song</source>
        <translation>nessuna song</translation>
    </message>
    <message>
        <source>da aggiornare</source>
        <translation>da aggiornare</translation>
    </message>
    <message>
        <source>non copiata</source>
        <translation>non copiata</translation>
    </message>
    <message>
        <source>non copiate</source>
        <translation>non copiate</translation>
    </message>
    <message>
        <source>non tornata com'era</source>
        <translation>non tornata com'era</translation>
    </message>
    <message>
        <source>non tornate com'erano</source>
        <translation>non tornate com'erano</translation>
    </message>
    <message>
        <source>non salvata</source>
        <translation>non salvata</translation>
    </message>
    <message>
        <source>non salvate</source>
        <translation>non salvate</translation>
    </message>
    <message>
        <source>non trovata né per nome né per titolo</source>
        <translation>non trovata né per nome né per titolo</translation>
    </message>
    <message>
        <source>non salvabile</source>
        <translation>non salvabile</translation>
    </message>
    <message>
        <source>non salvabili</source>
        <translation>non salvabili</translation>
    </message>
</context>
<context>
    <name>JournalFile</name>
    <message>
        <source>Il registro delle modifiche %1 non può essere scritto (%2): le song vengono salvate lo stesso, ma queste modifiche non si potranno annullare.</source>
        <translation>Il registro delle modifiche %1 non può essere scritto (%2): le song vengono salvate lo stesso, ma queste modifiche non si potranno annullare.</translation>
    </message>
    <message>
        <source>Il registro delle modifiche %1 non può essere aperto: %2</source>
        <translation>Il registro delle modifiche %1 non può essere aperto: %2</translation>
    </message>
    <message>
        <source>Il registro delle modifiche %1 è di una versione più recente del programma.</source>
        <translation>Il registro delle modifiche %1 è di una versione più recente del programma.</translation>
    </message>
    <message>
        <source>Il registro delle modifiche %1 è danneggiato.</source>
        <translation>Il registro delle modifiche %1 è danneggiato.</translation>
    </message>
    <message>
        <source>È stato messo da parte come %1: le modifiche precedenti non si possono annullare.</source>
        <translation>È stato messo da parte come %1: le modifiche precedenti non si possono annullare.</translation>
    </message>
    <message>
        <source>Le modifiche non si potranno annullare.</source>
        <translation>Le modifiche non si potranno annullare.</translation>
    </message>
    <message>
        <source>Il registro delle modifiche %1 non può essere letto: %2</source>
        <translation>Il registro delle modifiche %1 non può essere letto: %2</translation>
    </message>
</context>
<context>
    <name>LibrarySteps</name>
    <message>
        <source>Seleziona i file da importare</source>
        <translation>Seleziona i file da importare</translation>
    </message>
    <message>
        <source>Scegli cartella</source>
        <translation>Scegli cartella</translation>
    </message>
</context>
<context>
    <name>ManualEdit</name>
    <message>
        <source>Modifica dati song</source>
        <translation>Modifica dati song</translation>
    </message>
    <message>
        <source>Non è stato possibile salvare i seguenti file:</source>
        <translation>Non è stato possibile salvare i seguenti file:</translation>
    </message>
</context>
<context>
    <name>MediaSidebar</name>
    <message>
        <source>%1, %2 liberi</source>
        <translation>%1, %2 liberi</translation>
    </message>
</context>
<context>
    <name>Mp3Player</name>
    <message>
        <source>il sistema non può suonare questo file MP3</source>
        <translation>il sistema non può suonare questo file MP3</translation>
    </message>
</context>
<context>
    <name>Outcome</name>
    <message>
        <source>il tag ID3 è incompleto</source>
        <translation>il tag ID3 è incompleto</translation>
    </message>
    <message>
        <source>il tag avrebbe %1 byte, ne sono ammessi %2</source>
        <translation>il tag avrebbe %1 byte, ne sono ammessi %2</translation>
    </message>
    <message>
        <source>l'intestazione è incompleta</source>
        <translation>l'intestazione è incompleta</translation>
    </message>
    <message>
        <source>la parte compressa non si espande</source>
        <translation>la parte compressa non si espande</translation>
    </message>
    <message>
        <source>la parte compressa non contiene MIDI</source>
        <translation>la parte compressa non contiene MIDI</translation>
    </message>
    <message>
        <source>non è un file MIDI di formato 0 o 1</source>
        <translation>non è un file MIDI di formato 0 o 1</translation>
    </message>
    <message>
        <source>la song va ripresa da un backup</source>
        <translation>la song va ripresa da un backup</translation>
    </message>
    <message>
        <source>il file non c'è: controllare il percorso, o inserire la memoria su cui si trova</source>
        <translation>il file non c'è: controllare il percorso, o inserire la memoria su cui si trova</translation>
    </message>
    <message>
        <source>non è un file, ma una cartella, una pipe o un dispositivo</source>
        <translation>non è un file, ma una cartella, una pipe o un dispositivo</translation>
    </message>
    <message>
        <source>manca il permesso di leggerlo</source>
        <translation>manca il permesso di leggerlo</translation>
    </message>
    <message>
        <source>non è una song .mid, .kar, .mp3, .mf3, .mf4 o .mf5</source>
        <translation>non è una song .mid, .kar, .mp3, .mf3, .mf4 o .mf5</translation>
    </message>
    <message>
        <source>la song è danneggiata: %1</source>
        <translation>la song è danneggiata: %1</translation>
    </message>
    <message>
        <source>l'indice è danneggiato (%1): va ricostruito</source>
        <translation>l'indice è danneggiato (%1): va ricostruito</translation>
    </message>
    <message>
        <source>non è una song .mf3, .mf4 o .mf5</source>
        <translation>non è una song .mf3, .mf4 o .mf5</translation>
    </message>
    <message>
        <source>il testo è troppo lungo: %1</source>
        <translation>il testo è troppo lungo: %1</translation>
    </message>
    <message>
        <source>questo formato non può contenere la lettera "%1"</source>
        <translation>questo formato non può contenere la lettera "%1"</translation>
    </message>
    <message>
        <source>è troppo grande: %1</source>
        <translation>è troppo grande: %1</translation>
    </message>
    <message>
        <source>questo formato non può contenere marker</source>
        <translation>questo formato non può contenere marker</translation>
    </message>
    <message>
        <source>un altro programma l'ha cambiato nel frattempo: va riletto</source>
        <translation>un altro programma l'ha cambiato nel frattempo: va riletto</translation>
    </message>
    <message>
        <source>manca il permesso di scriverlo</source>
        <translation>manca il permesso di scriverlo</translation>
    </message>
    <message>
        <source>il disco o la memoria ha dato un errore (%1)</source>
        <translation>il disco o la memoria ha dato un errore (%1)</translation>
    </message>
    <message>
        <source>il nome o il percorso è troppo lungo</source>
        <translation>il nome o il percorso è troppo lungo</translation>
    </message>
    <message>
        <source>esiste già</source>
        <translation>esiste già</translation>
    </message>
    <message>
        <source>è usato da un altro programma</source>
        <translation>è usato da un altro programma</translation>
    </message>
    <message>
        <source>al suo posto c'è un collegamento, che non viene seguito</source>
        <translation>al suo posto c'è un collegamento, che non viene seguito</translation>
    </message>
    <message>
        <source>non viene sovrascritto, perché è %1</source>
        <translation>non viene sovrascritto, perché è %1</translation>
    </message>
    <message>
        <source>salvato, ma il disco o la memoria non l'ha confermato: va controllato prima di toglierla</source>
        <translation>salvato, ma il disco o la memoria non l'ha confermato: va controllato prima di toglierla</translation>
    </message>
    <message>
        <source>non salvato, e il contenuto di prima non è tornato al suo posto: %1</source>
        <translation>non salvato, e il contenuto di prima non è tornato al suo posto: %1</translation>
    </message>
    <message>
        <source>più di quanto il disco o la memoria accetta</source>
        <translation>più di quanto il disco o la memoria accetta</translation>
    </message>
    <message>
        <source>sono ammessi al massimo %1 byte</source>
        <translation>sono ammessi al massimo %1 byte</translation>
    </message>
    <message>
        <source>mancano almeno %1</source>
        <translation>mancano almeno %1</translation>
    </message>
    <message>
        <source>non c'è abbastanza spazio libero sul disco o sulla memoria: %1</source>
        <translation>non c'è abbastanza spazio libero sul disco o sulla memoria: %1</translation>
    </message>
    <message>
        <source>il disco o la memoria è protetta da scrittura (%1): se prima si poteva scrivere, va riparata</source>
        <translation>il disco o la memoria è protetta da scrittura (%1): se prima si poteva scrivere, va riparata</translation>
    </message>
    <message>
        <source>tornerà al prossimo avvio del programma</source>
        <translation>tornerà al prossimo avvio del programma</translation>
    </message>
    <message>
        <source>%1 e %2 sono forse lo stesso file: va riparata</source>
        <translation>%1 e %2 sono forse lo stesso file: va riparata</translation>
    </message>
</context>
<context>
    <name>OutputTarget</name>
    <message>
        <source>una song</source>
        <translation>una song</translation>
    </message>
    <message>
        <source>un catalogo</source>
        <translation>un catalogo</translation>
    </message>
    <message>
        <source>un file dell'indice di una memoria</source>
        <translation>un file dell'indice di una memoria</translation>
    </message>
</context>
<context>
    <name>RecoveryJob</name>
    <message>
        <source>%1: rimesso al suo posto dopo un'interruzione</source>
        <translation>%1: rimesso al suo posto dopo un'interruzione</translation>
    </message>
    <message>
        <source>%1: tolta la vecchia copia lasciata da un'interruzione</source>
        <translation>%1: tolta la vecchia copia lasciata da un'interruzione</translation>
    </message>
    <message>
        <source>%1: la vecchia copia lasciata da un'interruzione resta come %2</source>
        <translation>%1: la vecchia copia lasciata da un'interruzione resta come %2</translation>
    </message>
    <message>
        <source>%1: un salvataggio è stato interrotto, il contenuto di prima è tornato al suo posto</source>
        <translation>%1: un salvataggio è stato interrotto, il contenuto di prima è tornato al suo posto</translation>
    </message>
    <message>
        <source>%1: un salvataggio è stato interrotto e sarà messo a posto quando la song si potrà di nuovo leggere e scrivere (%2)</source>
        <translation>%1: un salvataggio è stato interrotto e sarà messo a posto quando la song si potrà di nuovo leggere e scrivere (%2)</translation>
    </message>
    <message>
        <source>%1: un salvataggio è stato interrotto, ma poi la song è stata cambiata da un altro programma e resta com'è</source>
        <translation>%1: un salvataggio è stato interrotto, ma poi la song è stata cambiata da un altro programma e resta com'è</translation>
    </message>
</context>
<context>
    <name>SongActions</name>
    <message>
        <source>Remove from list</source>
        <translation>To&amp;gli dalla lista</translation>
    </message>
    <message>
        <source>Delete file</source>
        <translation>&amp;Cancella il file</translation>
    </message>
    <message>
        <source>Attenzione</source>
        <translation>Attenzione</translation>
    </message>
    <message>
        <source>Sei sicuro di voler cancellare il file?</source>
        <translation>Sei sicuro di voler cancellare il file?</translation>
    </message>
    <message>
        <source>&amp;Modifica...</source>
        <translation>&amp;Modifica...</translation>
    </message>
    <message>
        <source>Mostra nella cartella</source>
        <translation>M&amp;ostra nella cartella</translation>
    </message>
    <message>
        <source>&amp;Perché questo segno?</source>
        <translation>&amp;Perché questo segno?</translation>
    </message>
    <message>
        <source>Segno della song</source>
        <translation>Segno della song</translation>
    </message>
</context>
<context>
    <name>SongIntake</name>
    <message>
        <source>Scegli la cartella da importare</source>
        <translation>Scegli la cartella da importare</translation>
    </message>
    <message>
        <source>Lettura cartella</source>
        <translation>Lettura cartella</translation>
    </message>
    <message>
        <source>Cerco le song...</source>
        <translation>Cerco le song...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Interrompi</translation>
    </message>
    <message>
        <source>Qui non ci sono song.</source>
        <translation>Qui non ci sono song.</translation>
    </message>
    <message>
        <source>%1: non può essere letto</source>
        <translation>%1: non può essere letto</translation>
    </message>
    <message>
        <source>Alcuni file o cartelle non possono essere letti e vengono saltati.</source>
        <translation>Alcuni file o cartelle non possono essere letti e vengono saltati.</translation>
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
    <name>SongRows</name>
    <message>
        <source>non è nel catalogo</source>
        <translation>non è nel catalogo</translation>
    </message>
    <message>
        <source>non è stata pubblicata da K-Varo, lasciata com'era</source>
        <translation>non è stata pubblicata da K-Varo, lasciata com'era</translation>
    </message>
    <message>
        <source>Non aggiornata: %1</source>
        <translation>Non aggiornata: %1</translation>
    </message>
    <message>
        <source>Non letta: %1</source>
        <translation>Non letta: %1</translation>
    </message>
    <message>
        <source>Non salvata: %1</source>
        <translation>Non salvata: %1</translation>
    </message>
    <message>
        <source>Non rimessa com'era: %1</source>
        <translation>Non rimessa com'era: %1</translation>
    </message>
</context>
<context>
    <name>TransferJob</name>
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
        <source>Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST perchè sono riservate, selezionare un'altra cartella</source>
        <translation>Non è possibile utilizzare le cartelle BRIDGE, SFX e PLAYLIST perchè sono riservate, selezionare un'altra cartella</translation>
    </message>
    <message>
        <source>Trasferimento file...</source>
        <translation>Trasferimento file...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Interrompi</translation>
    </message>
    <message>
        <source>Aggiornamento</source>
        <translation>Aggiornamento</translation>
    </message>
    <message>
        <source>Aggiornamento database...</source>
        <translation>Aggiornamento database...</translation>
    </message>
    <message>
        <source>Tutto è scritto: ora si può togliere la memoria.</source>
        <translation>Tutto è scritto: ora si può togliere la memoria.</translation>
    </message>
</context>
<context>
    <name>UDisksDrive</name>
    <message>
        <source>un altro programma la sta usando: chiudilo e riprova</source>
        <translation>un altro programma la sta usando: chiudilo e riprova</translation>
    </message>
    <message>
        <source>il sistema non lo permette</source>
        <translation>il sistema non lo permette</translation>
    </message>
    <message>
        <source>il sistema non ha risposto</source>
        <translation>il sistema non ha risposto</translation>
    </message>
</context>
<context>
    <name>UndoChanges</name>
    <message>
        <source>Annulla l'ultima modifica</source>
        <translation>Annulla l'ultima modifica</translation>
    </message>
    <message>
        <source>Le ultime modifiche non si possono leggere: nessuna song è cambiata.</source>
        <translation>Le ultime modifiche non si possono leggere: nessuna song è cambiata.</translation>
    </message>
    <message>
        <source>Non c'è nessuna modifica da annullare.</source>
        <translation>Non c'è nessuna modifica da annullare.</translation>
    </message>
    <message>
        <source>Ultima modifica: %1
Data e ora: %2
Song: %3</source>
        <translation>Ultima modifica: %1
Data e ora: %2
Song: %3</translation>
    </message>
    <message>
        <source>Vuoi rimettere queste song com'erano prima?</source>
        <translation>Vuoi rimettere queste song com'erano prima?</translation>
    </message>
    <message>
        <source>correzione dei dati</source>
        <translation>correzione dei dati</translation>
    </message>
    <message>
        <source>sincronizzazione con il database K-Varo</source>
        <translation>sincronizzazione con il database K-Varo</translation>
    </message>
    <message>
        <source>annullamento di una modifica</source>
        <translation>annullamento di una modifica</translation>
    </message>
    <message>
        <source>ripristino da un backup</source>
        <translation>ripristino da un backup</translation>
    </message>
    <message>
        <source>Song tornate com'erano: %1 di %2</source>
        <translation>Song tornate com'erano: %1 di %2</translation>
    </message>
    <message>
        <source>Queste song restano come sono:</source>
        <translation>Queste song restano come sono:</translation>
    </message>
    <message>
        <source>Già tornate com'erano, prima che l'annullamento fosse interrotto: %1</source>
        <translation>Già tornate com'erano, prima che l'annullamento fosse interrotto: %1</translation>
    </message>
</context>
<context>
    <name>UndoJob</name>
    <message>
        <source>Annulla le modifiche</source>
        <translation>Annulla le modifiche</translation>
    </message>
    <message>
        <source>Rimetto le song com'erano...</source>
        <translation>Rimetto le song com'erano...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Interrompi</translation>
    </message>
    <message>
        <source>una di più song con questo nome, e il backup ne contiene una sola</source>
        <translation>una di più song con questo nome, e il backup ne contiene una sola</translation>
    </message>
    <message>
        <source>è stato cambiato da allora, perciò resta com'è</source>
        <translation>è stato cambiato da allora, perciò resta com'è</translation>
    </message>
</context>
<context>
    <name>UpdateJob</name>
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
        <translation>&amp;Interrompi</translation>
    </message>
</context>
<context>
    <name>UpdatePreview</name>
    <message>
        <source>Anteprima</source>
        <translation>Anteprima</translation>
    </message>
    <message>
        <source>Cerco che cosa cambierebbe...</source>
        <translation>Cerco che cosa cambierebbe...</translation>
    </message>
    <message>
        <source>Interrompi</source>
        <translation>&amp;Interrompi</translation>
    </message>
</context>
<context>
    <name>WindowHost</name>
    <message>
        <source>%1 di %2</source>
        <translation>%1 di %2</translation>
    </message>
    <message>
        <source>esiste già, vuoi sostituirlo?</source>
        <translation>esiste già, vuoi sostituirlo?</translation>
    </message>
    <message>
        <source>Registro delle modifiche</source>
        <translation>Registro delle modifiche</translation>
    </message>
    <message>
        <source>Song messe a posto: %1</source>
        <translation>Song messe a posto: %1</translation>
    </message>
    <message>
        <source>Song da mettere a posto più tardi: %1</source>
        <translation>Song da mettere a posto più tardi: %1</translation>
    </message>
    <message>
        <source>Song lasciate come sono: %1</source>
        <translation>Song lasciate come sono: %1</translation>
    </message>
    <message>
        <source>Salvataggi interrotti</source>
        <translation>Salvataggi interrotti</translation>
    </message>
    <message>
        <source>Alcuni salvataggi erano stati interrotti.</source>
        <translation>Alcuni salvataggi erano stati interrotti.</translation>
    </message>
    <message>
        <source>Lavoro interrotto</source>
        <translation>Lavoro interrotto</translation>
    </message>
</context>
<context>
    <name>tarvel4::AboutDialog</name>
    <message>
        <source>Informazioni</source>
        <translation>Informazioni</translation>
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
        <source>Copyright &amp;copy; 2026 &lt;a href="https://www.k-varo.example/"&gt;K-Varo&lt;/a&gt;. Tutti i diritti riservati.&lt;br/&gt;Assistenza: &lt;a href="mailto:assistenza@k-varo.example"&gt;assistenza@k-varo.example&lt;/a&gt;</source>
        <translation>Copyright &amp;copy; 2026 &lt;a href="https://www.k-varo.example/"&gt;K-Varo&lt;/a&gt;. Tutti i diritti riservati.&lt;br/&gt;Assistenza: &lt;a href="mailto:assistenza@k-varo.example"&gt;assistenza@k-varo.example&lt;/a&gt;</translation>
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
        <translation>&amp;Sfoglia...</translation>
    </message>
    <message>
        <source>Esegui backup</source>
        <translation>&amp;Esegui backup</translation>
    </message>
    <message>
        <source>Prosegui senza backup</source>
        <translation>&amp;Prosegui senza backup</translation>
    </message>
    <message>
        <source>Annulla</source>
        <translation>A&amp;nnulla</translation>
    </message>
    <message>
        <source>Si consiglia di effettuare un backup della libreria prima di procedere con l'aggiornamento.
Selezionare una cartella di destinazione per il backup oppure premere 'Prosegui senza backup'.</source>
        <translation>Si consiglia di effettuare un backup della libreria prima di procedere con l'aggiornamento.
Selezionare una cartella di destinazione per il backup oppure premere 'Prosegui senza backup'.</translation>
    </message>
    <message>
        <source>Scegli cartella</source>
        <translation>Scegli cartella</translation>
    </message>
    <message>
        <source>Anteprima...</source>
        <translation>&amp;Anteprima...</translation>
    </message>
    <message>
        <source>Mostra che cosa cambierebbe, senza scrivere nulla</source>
        <translation>Mostra che cosa cambierebbe, senza scrivere nulla</translation>
    </message>
    <message>
        <source>Cartella del backup</source>
        <translation>Cartella del backup</translation>
    </message>
</context>
<context>
    <name>tarvel4::DataEditDialog</name>
    <message>
        <source>Modifica Dati</source>
        <translation>Modifica Dati</translation>
    </message>
    <message>
        <source>Percorso file:</source>
        <translation>Percorso file:</translation>
    </message>
    <message>
        <source>Formato:</source>
        <translation>Formato:</translation>
    </message>
    <message>
        <source>Modifica i dati della Song:</source>
        <translation>Modifica i dati della Song:</translation>
    </message>
    <message>
        <source>Titolo Song:</source>
        <translation>&amp;Titolo Song:</translation>
    </message>
    <message>
        <source>Usa il titolo</source>
        <translation>&amp;Usa il titolo</translation>
    </message>
    <message>
        <source>Usa il filename</source>
        <translation>Usa il &amp;filename</translation>
    </message>
    <message>
        <source>Interprete:</source>
        <translation>Int&amp;erprete:</translation>
    </message>
    <message>
        <source>Genere Musicale:</source>
        <translation>&amp;Genere Musicale:</translation>
    </message>
    <message>
        <source>Autore:</source>
        <translation>&amp;Autore:</translation>
    </message>
    <message>
        <source>Durata:</source>
        <translation>&amp;Durata:</translation>
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
        <translation>T&amp;onalità:</translation>
    </message>
    <message>
        <source>BPM:</source>
        <translation>&amp;BPM:</translation>
    </message>
    <message>
        <source>Salva</source>
        <translation>&amp;Salva</translation>
    </message>
    <message>
        <source>Annulla</source>
        <translation>A&amp;nnulla</translation>
    </message>
    <message>
        <source>Modifica dati song</source>
        <translation>Modifica dati song</translation>
    </message>
    <message>
        <source>L'autore inserito verrà applicato a tutte le song della lista, sei sicuro?</source>
        <translation>L'autore inserito verrà applicato a tutte le song della lista, sei sicuro?</translation>
    </message>
    <message>
        <source>L'interprete inserito verrà applicato a tutte le song della lista, sei sicuro?</source>
        <translation>L'interprete inserito verrà applicato a tutte le song della lista, sei sicuro?</translation>
    </message>
    <message>
        <source>Il genere inserito verrà applicato a tutte le song della lista, sei sicuro?</source>
        <translation>Il genere inserito verrà applicato a tutte le song della lista, sei sicuro?</translation>
    </message>
    <message>
        <source>Il titolo di tutte le song della lista verrà sovrascritto non il nome del file, sei sicuro?</source>
        <translation>Il titolo di tutte le song della lista verrà sovrascritto non il nome del file, sei sicuro?</translation>
    </message>
    <message>
        <source>ATTENZIONE</source>
        <translation>ATTENZIONE</translation>
    </message>
    <message>
        <source>Dati della song</source>
        <translation>Dati della song</translation>
    </message>
    <message>
        <source>Titolo</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>Origine del titolo</source>
        <translation>Origine del titolo</translation>
    </message>
    <message>
        <source>Applica il titolo a tutte</source>
        <translation>Applica il titolo a tutte</translation>
    </message>
    <message>
        <source>Applica a tutti</source>
        <comment>title</comment>
        <translation>A&amp;pplica a tutti</translation>
    </message>
    <message>
        <source>Interprete</source>
        <translation>Interprete</translation>
    </message>
    <message>
        <source>Applica l'interprete a tutte</source>
        <translation>Applica l'interprete a tutte</translation>
    </message>
    <message>
        <source>Applica a tutti</source>
        <comment>artist</comment>
        <translation>App&amp;lica a tutti</translation>
    </message>
    <message>
        <source>Genere musicale</source>
        <translation>Genere musicale</translation>
    </message>
    <message>
        <source>Applica il genere a tutte</source>
        <translation>Applica il genere a tutte</translation>
    </message>
    <message>
        <source>Applica a tutti</source>
        <comment>genre</comment>
        <translation>Appli&amp;ca a tutti</translation>
    </message>
    <message>
        <source>Autore</source>
        <translation>Autore</translation>
    </message>
    <message>
        <source>Applica l'autore a tutte</source>
        <translation>Applica l'autore a tutte</translation>
    </message>
    <message>
        <source>Applica a tutti</source>
        <comment>author</comment>
        <translation>Appl&amp;ica a tutti</translation>
    </message>
    <message>
        <source>Durata, minuti</source>
        <translation>Durata, minuti</translation>
    </message>
    <message>
        <source>Durata, secondi</source>
        <translation>Durata, secondi</translation>
    </message>
    <message>
        <source>Tonalità</source>
        <translation>Tonalità</translation>
    </message>
    <message>
        <source>Tempo, battiti al minuto</source>
        <translation>Tempo, battiti al minuto</translation>
    </message>
    <message>
        <source>Precedente</source>
        <translation>P&amp;recedente</translation>
    </message>
    <message>
        <source>Successiva</source>
        <translation>Successi&amp;va</translation>
    </message>
    <message>
        <source>Salva le modifiche e passa alla song precedente</source>
        <translation>Salva le modifiche e passa alla song precedente</translation>
    </message>
    <message>
        <source>Salva le modifiche e passa alla song successiva</source>
        <translation>Salva le modifiche e passa alla song successiva</translation>
    </message>
</context>
<context>
    <name>tarvel4::EditManyDialog</name>
    <message>
        <source>A&amp;pplica</source>
        <translation>A&amp;pplica</translation>
    </message>
    <message>
        <source>Modifica più song</source>
        <translation>Modifica più song</translation>
    </message>
    <message>
        <source>Song da modificare</source>
        <translation>Song da modificare</translation>
    </message>
    <message>
        <source>Scegli &amp;tutte</source>
        <translation>Scegli &amp;tutte</translation>
    </message>
    <message>
        <source>A&amp;nnulla</source>
        <translation>A&amp;nnulla</translation>
    </message>
    <message>
        <source>&amp;Song da modificare (con Ctrl o Maiusc se ne scelgono più):</source>
        <translation>&amp;Song da modificare (con Ctrl o Maiusc se ne scelgono più):</translation>
    </message>
    <message>
        <source>&amp;Genere Musicale:</source>
        <translation>&amp;Genere Musicale:</translation>
    </message>
    <message>
        <source>&amp;Interprete:</source>
        <translation>&amp;Interprete:</translation>
    </message>
    <message>
        <source>&amp;Autore:</source>
        <translation>&amp;Autore:</translation>
    </message>
    <message>
        <source>Scrivi in tutte: %1</source>
        <translation>Scrivi in tutte: %1</translation>
    </message>
    <message>
        <source>Song scelte: %1 di %2</source>
        <translation>Song scelte: %1 di %2</translation>
    </message>
    <message>
        <source>Titolo</source>
        <translation>Titolo</translation>
    </message>
    <message>
        <source>Interprete</source>
        <translation>Interprete</translation>
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
        <translation>tutte</translation>
    </message>
</context>
<context>
    <name>tarvel4::HelpDialog</name>
    <message>
        <source>Aiuto Tarvel4 Soft</source>
        <translation>Aiuto Tarvel4 Soft</translation>
    </message>
    <message>
        <source>Cerca nell'aiuto</source>
        <translation>Cerca nell'aiuto</translation>
    </message>
    <message>
        <source>Punto precedente</source>
        <translation>Punto precedente</translation>
    </message>
    <message>
        <source>Punto successivo</source>
        <translation>Punto successivo</translation>
    </message>
    <message>
        <source>Testo dell'aiuto</source>
        <translation>Testo dell'aiuto</translation>
    </message>
    <message>
        <source>Cerca nell'aiuto (%1)</source>
        <translation>Cerca nell'aiuto (%1)</translation>
    </message>
    <message>
        <source>Punto successivo (%1)</source>
        <translation>Punto successivo (%1)</translation>
    </message>
    <message>
        <source>Punto precedente (%1)</source>
        <translation>Punto precedente (%1)</translation>
    </message>
    <message>
        <source>Non trovato</source>
        <translation>Non trovato</translation>
    </message>
</context>
<context>
    <name>tarvel4::Index</name>
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
    <name>tarvel4::IndexDialog</name>
    <message>
        <source>Dialog</source>
        <translation>Ottimizza memoria</translation>
    </message>
    <message>
        <source>Seleziona la cartella principale della Compact Flash o della Penna USB che vuoi ottimizzare per Tarvel4</source>
        <translation>Seleziona la cartella &amp;principale della Compact Flash o della Penna USB che vuoi ottimizzare per Tarvel4</translation>
    </message>
    <message>
        <source>Sfoglia</source>
        <translation>&amp;Sfoglia</translation>
    </message>
    <message>
        <source>Seleziona l'azione che vuoi eseguire:</source>
        <translation>Seleziona l'azione che &amp;vuoi eseguire:</translation>
    </message>
    <message>
        <source>Ho inserito o eliminato alcune song, aggiorna database</source>
        <translation>Ho inserito o eliminato alcune song, &amp;aggiorna database</translation>
    </message>
    <message>
        <source>Ho problemi con gli archivi, ricostruisci database</source>
        <translation>Ho problemi con gli archivi, &amp;ricostruisci database</translation>
    </message>
    <message>
        <source>Controlla struttura memoria</source>
        <translation>Controlla struttura &amp;memoria</translation>
    </message>
    <message>
        <source>File found:</source>
        <translation>File trovati:</translation>
    </message>
    <message>
        <source>Report:</source>
        <translation>Rep&amp;ort:</translation>
    </message>
    <message>
        <source>Inizia</source>
        <translation>&amp;Inizia</translation>
    </message>
    <message>
        <source>Chiudi</source>
        <translation>&amp;Chiudi</translation>
    </message>
    <message>
        <source>Scegli cartella</source>
        <translation>Scegli cartella</translation>
    </message>
    <message>
        <source>Ottimizza memoria</source>
        <translation>Ottimizza memoria</translation>
    </message>
    <message>
        <source>Il percorso selezionato non esiste</source>
        <translation>Il percorso selezionato non esiste</translation>
    </message>
    <message>
        <source>Ottimizzazione memoria in corso...</source>
        <translation>Ottimizzazione memoria in corso...</translation>
    </message>
    <message>
        <source>Operazione completata</source>
        <translation>Operazione completata</translation>
    </message>
    <message>
        <source>ATTENZIONE</source>
        <translation>ATTENZIONE</translation>
    </message>
    <message>
        <source>Controllo memoria non eseguito!</source>
        <translation>Controllo memoria non eseguito!</translation>
    </message>
    <message>
        <source>Controllo memoria</source>
        <translation>Controllo memoria</translation>
    </message>
    <message>
        <source>Non è stato possibile correggere gli errori, è necesario formattare la memoria</source>
        <translation>Non è stato possibile correggere gli errori, è necesario formattare la memoria</translation>
    </message>
    <message>
        <source>Durante l'operazione si sono verificati alcuni errori.
Consultare il report per maggiori informazioni.</source>
        <translation>Durante l'operazione si sono verificati alcuni errori.
Consultare il report per maggiori informazioni.</translation>
    </message>
    <message>
        <source>Operazione completata con successo</source>
        <translation>Operazione completata con successo</translation>
    </message>
    <message>
        <source>Operazione non riuscita.
Assicurarsi che il disco abbia sufficiente spazio libero e che non sia protetto da scrittura.</source>
        <translation>Operazione non riuscita.
Assicurarsi che il disco abbia sufficiente spazio libero e che non sia protetto da scrittura.</translation>
    </message>
    <message>
        <source>Avanzamento</source>
        <translation>Avanzamento</translation>
    </message>
</context>
<context>
    <name>tarvel4::JobReports</name>
    <message>
        <source>Questa song non è nella tabella: %1</source>
        <translation>Questa song non è nella tabella: %1</translation>
    </message>
    <message>
        <source>La riga di questa song ora è nascosta: %1</source>
        <translation>La riga di questa song ora è nascosta: %1</translation>
    </message>
</context>
<context>
    <name>tarvel4::ListenStrip</name>
    <message>
        <source>In ascolto: %1</source>
        <translation>In ascolto: %1</translation>
    </message>
    <message>
        <source>Marker</source>
        <translation>Marker</translation>
    </message>
    <message>
        <source>Ascolta da un marker</source>
        <translation>Ascolta da un marker</translation>
    </message>
    <message>
        <source>Ferma</source>
        <translation>Ferma</translation>
    </message>
    <message>
        <source>Ferma l'ascolto (Spazio nella tabella)</source>
        <translation>Ferma l'ascolto (Spazio nella tabella)</translation>
    </message>
    <message>
        <source>Posizione nella song</source>
        <translation>Posizione nella song</translation>
    </message>
</context>
<context>
    <name>tarvel4::Listening</name>
    <message>
        <source>Ferma l'ascolto</source>
        <translation>&amp;Ferma l'ascolto</translation>
    </message>
    <message>
        <source>Ascolta</source>
        <translation>Ascol&amp;ta</translation>
    </message>
    <message>
        <source>Ascolta da un marker</source>
        <translation>Ascolta da &amp;un marker</translation>
    </message>
    <message>
        <source>Questa song non ha marker</source>
        <translation>Questa song non ha marker</translation>
    </message>
    <message>
        <source>Ascolto</source>
        <translation>Ascolto</translation>
    </message>
    <message>
        <source>Non è possibile ascoltare la song:</source>
        <translation>Non è possibile ascoltare la song:</translation>
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
        <translation>Seleziona le basi musicali che desideri inserire nella memoria di Tarvel</translation>
    </message>
    <message>
        <source>Sincronizza song con il
database K-Varo</source>
        <translation>Sincronizza song con il
database K-Varo</translation>
    </message>
    <message>
        <source>Trasferisci song nella
memoria di Tarvel</source>
        <translation>Trasferisci song nella
memoria di Tarvel</translation>
    </message>
    <message>
        <source>Opzioni nascoste</source>
        <translation>Opzioni nascoste</translation>
    </message>
    <message>
        <source>Abilita log (riavvio necessario!)</source>
        <translation>Abilita log (riavvio necessario!)</translation>
    </message>
    <message>
        <source>Cancella log ad ogni avvio</source>
        <translation>Cancella log ad ogni avvio</translation>
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
        <translation>&amp;Preferenze</translation>
    </message>
    <message>
        <source>Lingua</source>
        <translation>&amp;Lingua</translation>
    </message>
    <message>
        <source>Messaggi Copyright</source>
        <translation>&amp;Messaggi Copyright</translation>
    </message>
    <message>
        <source>Strumenti</source>
        <translation>&amp;Strumenti</translation>
    </message>
    <message>
        <source>Aiuto</source>
        <translation>&amp;Aiuto</translation>
    </message>
    <message>
        <source>Esci</source>
        <translation>&amp;Esci</translation>
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
        <translation>&amp;Si</translation>
    </message>
    <message>
        <source>No</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>Rigenera il database delle song</source>
        <translation>&amp;Rigenera il database delle song</translation>
    </message>
    <message>
        <source>Salva lista delle song</source>
        <translation>Salva &amp;lista delle song</translation>
    </message>
    <message>
        <source>Aiuto Tarvel4 Soft</source>
        <translation>&amp;Aiuto Tarvel4 Soft</translation>
    </message>
    <message>
        <source>Informazioni</source>
        <translation>&amp;Informazioni</translation>
    </message>
    <message>
        <source>Informazioni su QT</source>
        <translation>Informazioni su &amp;QT</translation>
    </message>
    <message>
        <source>Ctrl+O</source>
        <translation>Ctrl+O</translation>
    </message>
    <message>
        <source>Annulla l'ultima modifica...</source>
        <translation>&amp;Annulla l'ultima modifica...</translation>
    </message>
    <message>
        <source>Modifica più song...</source>
        <translation>&amp;Modifica più song...</translation>
    </message>
    <message>
        <source>Importa una cartella...</source>
        <translation>&amp;Importa una cartella...</translation>
    </message>
    <message>
        <source>Mostra l'ultimo resoconto</source>
        <translation>M&amp;ostra l'ultimo resoconto</translation>
    </message>
    <message>
        <source>Cerca nelle song</source>
        <translation>Cerca nelle song</translation>
    </message>
    <message>
        <source>Song da mostrare</source>
        <translation>Song da mostrare</translation>
    </message>
    <message>
        <source>Song</source>
        <translation>Song</translation>
    </message>
    <message>
        <source>Anteprima della sincronizzazione...</source>
        <translation>Anteprima della &amp;sincronizzazione...</translation>
    </message>
</context>
<context>
    <name>tarvel4::NoCopyrightDialog</name>
    <message>
        <source>Richiesta conferma</source>
        <translation>Richiesta conferma</translation>
    </message>
    <message>
        <source>Il file:</source>
        <translation>Il file:</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Non è stato pubblicato da K-Varo. Si vuole procedere comunque con le modifiche?</source>
        <translation>Non è stato pubblicato da K-Varo. Si vuole procedere comunque con le modifiche?</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>&amp;Si</translation>
    </message>
    <message>
        <source>Si tutti</source>
        <translation>Si &amp;tutti</translation>
    </message>
    <message>
        <source>No</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>No tutti</source>
        <translation>N&amp;o tutti</translation>
    </message>
    <message>
        <source>Da copiare:</source>
        <translation>Da copiare:</translation>
    </message>
    <message>
        <source>Già presente:</source>
        <translation>Già presente:</translation>
    </message>
</context>
<context>
    <name>tarvel4::PreviewDialog</name>
    <message>
        <source>Anteprima della sincronizzazione</source>
        <translation>Anteprima della sincronizzazione</translation>
    </message>
    <message>
        <source>Quali song elencare</source>
        <translation>Quali song elencare</translation>
    </message>
    <message>
        <source>Che cosa cambierebbe</source>
        <translation>Che cosa cambierebbe</translation>
    </message>
    <message>
        <source>Finora non è stato scritto nulla.</source>
        <translation>Finora non è stato scritto nulla.</translation>
    </message>
    <message>
        <source>Sincronizza...</source>
        <translation>&amp;Sincronizza...</translation>
    </message>
    <message>
        <source>Chiudi</source>
        <translation>&amp;Chiudi</translation>
    </message>
    <message>
        <source>Torna alla domanda</source>
        <translation>&amp;Torna alla domanda</translation>
    </message>
</context>
<context>
    <name>tarvel4::PreviewModel</name>
    <message>
        <source>Nome file</source>
        <translation>Nome file</translation>
    </message>
    <message>
        <source>Esito</source>
        <translation>Esito</translation>
    </message>
    <message>
        <source>Campo</source>
        <translation>Campo</translation>
    </message>
    <message>
        <source>Adesso</source>
        <translation>Adesso</translation>
    </message>
    <message>
        <source>Dopo</source>
        <translation>Dopo</translation>
    </message>
</context>
<context>
    <name>tarvel4::ProceedDialog</name>
    <message>
        <source>Riassunto importazione</source>
        <translation>Riassunto importazione</translation>
    </message>
    <message>
        <source>Si vuole procedere alla sincronizzazione automatica con il database?</source>
        <translation>Si vuole procedere alla sincronizzazione automatica con il database?</translation>
    </message>
    <message>
        <source>Non mostrare più messaggi sul copyright</source>
        <translation>Non mostrare più messaggi sul &amp;copyright</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>&amp;Si</translation>
    </message>
    <message>
        <source>No</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>Sono stati esaminti %1 files, trovate %2 songs di cui %3 di (c)K-Varo</source>
        <translation>Sono stati esaminti %1 files, trovate %2 songs di cui %3 di (c)K-Varo</translation>
    </message>
    <message>
        <source>Mostra i file non letti</source>
        <translation>&amp;Mostra i file non letti</translation>
    </message>
    <message>
        <source>File non letti</source>
        <translation>File non letti</translation>
    </message>
</context>
<context>
    <name>tarvel4::ProgressDialog</name>
    <message>
        <source>Avanzamento</source>
        <translation>Avanzamento</translation>
    </message>
</context>
<context>
    <name>tarvel4::ReportModel</name>
    <message>
        <source>Esito</source>
        <translation>Esito</translation>
    </message>
    <message>
        <source>Nome file</source>
        <translation>Nome file</translation>
    </message>
    <message>
        <source>Dettagli</source>
        <translation>Dettagli</translation>
    </message>
</context>
<context>
    <name>tarvel4::ReportPanel</name>
    <message>
        <source>Resoconto dell'ultimo lavoro</source>
        <translation>Resoconto dell'ultimo lavoro</translation>
    </message>
    <message>
        <source>Quali song elencare</source>
        <translation>Quali song elencare</translation>
    </message>
    <message>
        <source>Quali song del resoconto elencare</source>
        <translation>Quali song del resoconto elencare</translation>
    </message>
    <message>
        <source>Salva come testo...</source>
        <translation>Sal&amp;va come testo...</translation>
    </message>
    <message>
        <source>Salva il resoconto come testo</source>
        <translation>Salva il resoconto come testo</translation>
    </message>
    <message>
        <source>Chiudi</source>
        <translation>&amp;Chiudi</translation>
    </message>
    <message>
        <source>Chiudi il resoconto (Esc)</source>
        <translation>Chiudi il resoconto (Esc)</translation>
    </message>
    <message>
        <source>Chiudi il resoconto</source>
        <translation>Chiudi il resoconto</translation>
    </message>
    <message>
        <source>Song del resoconto</source>
        <translation>Song del resoconto</translation>
    </message>
    <message>
        <source>Invio porta alla riga della song</source>
        <translation>Invio porta alla riga della song</translation>
    </message>
    <message>
        <source>resoconto</source>
        <translation>resoconto</translation>
    </message>
    <message>
        <source>Testo (*.txt)</source>
        <translation>Testo (*.txt)</translation>
    </message>
    <message>
        <source>Salvato in %1</source>
        <translation>Salvato in %1</translation>
    </message>
    <message>
        <source>Il resoconto non è stato salvato.</source>
        <translation>Il resoconto non è stato salvato.</translation>
    </message>
</context>
<context>
    <name>tarvel4::SongSearch</name>
    <message>
        <source>Cerca nelle song (%1)</source>
        <translation>Cerca nelle song (%1)</translation>
    </message>
    <message>
        <source>Tutte le song</source>
        <translation>Tutte le song</translation>
    </message>
    <message>
        <source>Aggiornate</source>
        <translation>Aggiornate</translation>
    </message>
    <message>
        <source>Modificate a mano</source>
        <translation>Modificate a mano</translation>
    </message>
    <message>
        <source>Non aggiornate</source>
        <translation>Non aggiornate</translation>
    </message>
    <message>
        <source>Non riuscite</source>
        <translation>Non riuscite</translation>
    </message>
    <message>
        <source>Qui compaiono le tue song: sceglile con il pulsante in alto a sinistra.</source>
        <translation>Qui compaiono le tue song: sceglile con il pulsante in alto a sinistra.</translation>
    </message>
    <message>
        <source>Nessuna song corrisponde alla ricerca.</source>
        <translation>Nessuna song corrisponde alla ricerca.</translation>
    </message>
    <message>
        <source>1 song</source>
        <translation>1 song</translation>
    </message>
    <message>
        <source>%1 song</source>
        <translation>%1 song</translation>
    </message>
    <message>
        <source>1 mostrata</source>
        <translation>1 mostrata</translation>
    </message>
    <message>
        <source>%1 mostrate</source>
        <translation>%1 mostrate</translation>
    </message>
    <message>
        <source>1 aggiornata</source>
        <translation>1 aggiornata</translation>
    </message>
    <message>
        <source>%1 aggiornate</source>
        <translation>%1 aggiornate</translation>
    </message>
    <message>
        <source>1 modificata a mano</source>
        <translation>1 modificata a mano</translation>
    </message>
    <message>
        <source>%1 modificate a mano</source>
        <translation>%1 modificate a mano</translation>
    </message>
    <message>
        <source>1 non aggiornata</source>
        <translation>1 non aggiornata</translation>
    </message>
    <message>
        <source>%1 non aggiornate</source>
        <translation>%1 non aggiornate</translation>
    </message>
    <message>
        <source>1 non riuscita</source>
        <translation>1 non riuscita</translation>
    </message>
    <message>
        <source>%1 non riuscite</source>
        <translation>%1 non riuscite</translation>
    </message>
    <message>
        <source>. Anche quelle nascoste vengono sincronizzate.</source>
        <translation>. Anche quelle nascoste vengono sincronizzate.</translation>
    </message>
    <message>
        <source>Già complete</source>
        <translation>Già complete</translation>
    </message>
    <message>
        <source>1 già completa</source>
        <translation>1 già completa</translation>
    </message>
    <message>
        <source>%1 già complete</source>
        <translation>%1 già complete</translation>
    </message>
</context>
<context>
    <name>tarvel4::SongsListDialog</name>
    <message>
        <source>Save song list</source>
        <translation>Salva lista song</translation>
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
        <translation>Ordina &amp;per:</translation>
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
        <source>Salva</source>
        <translation>Sal&amp;va</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>&amp;Esci</translation>
    </message>
    <message>
        <source>Scegli cartella</source>
        <translation>Scegli cartella</translation>
    </message>
    <message>
        <source>Scegli nome del file</source>
        <translation>Scegli nome del file</translation>
    </message>
    <message>
        <source>File (*.csv)</source>
        <translation>File (*.csv)</translation>
    </message>
    <message>
        <source>Salva lista song</source>
        <translation>Salva lista song</translation>
    </message>
    <message>
        <source>Il percorso selezionato non esiste</source>
        <translation>Il percorso selezionato non esiste</translation>
    </message>
    <message>
        <source>Il percorso di destinazione non esiste</source>
        <translation>Il percorso di destinazione non esiste</translation>
    </message>
    <message>
        <source>Operazione completata</source>
        <translation>Operazione completata</translation>
    </message>
    <message>
        <source>Impossibile proseguire, la memoria non è preparata per Tarvel</source>
        <translation>Impossibile proseguire, la memoria non è preparata per Tarvel</translation>
    </message>
    <message>
        <source>Errore durante la creazione del file</source>
        <translation>Errore durante la creazione del file</translation>
    </message>
    <message>
        <source>Il file esiste già, vuoi sostituirlo?</source>
        <translation>Il file esiste già, vuoi sostituirlo?</translation>
    </message>
    <message>
        <source>Browse</source>
        <comment>memory</comment>
        <translation>&amp;Sfoglia</translation>
    </message>
    <message>
        <source>Browse</source>
        <comment>list</comment>
        <translation>Sf&amp;oglia</translation>
    </message>
    <message>
        <source>Sfoglia, cartella della memoria</source>
        <translation>Sfoglia, cartella della memoria</translation>
    </message>
    <message>
        <source>Sfoglia, file della lista</source>
        <translation>Sfoglia, file della lista</translation>
    </message>
    <message>
        <source>Avanzamento</source>
        <translation>Avanzamento</translation>
    </message>
</context>
<context>
    <name>tarvel4::SortMenu</name>
    <message>
        <source>Ordina per</source>
        <translation>Ordina &amp;per</translation>
    </message>
    <message>
        <source>Crescente</source>
        <translation>Crescente</translation>
    </message>
    <message>
        <source>Decrescente</source>
        <translation>Decrescente</translation>
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
        <source>Tonalita'</source>
        <translation>Tonalita'</translation>
    </message>
    <message>
        <source>Nome file</source>
        <translation>Nome file</translation>
    </message>
    <message>
        <source>Aggiornata dal database K-Varo</source>
        <translation>Aggiornata dal database K-Varo</translation>
    </message>
    <message>
        <source>Modificata a mano</source>
        <translation>Modificata a mano</translation>
    </message>
    <message>
        <source>Non aggiornata</source>
        <translation>Non aggiornata</translation>
    </message>
    <message>
        <source>Non riuscita</source>
        <translation>Non riuscita</translation>
    </message>
</context>
</TS>

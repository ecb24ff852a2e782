#include "resources/db/cataloguerows.h"

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <random>

namespace tarvel4 {

namespace {

constexpr int rowCount = 8642;
constexpr int rowsWithoutMarkers = 929;
constexpr int rowsWithoutGenre = 40;
constexpr int distinctAltArtists = 2160;
constexpr int distinctTitles = 8300; ///< the rest share a title with another row
constexpr int shortestLength = 32;
constexpr int longestLength = 631;
constexpr int slowestBpm = 45;
constexpr int fastestBpm = 240;
constexpr int longestFilename = 8;

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char('|'));
}

const QStringList genres = words(
    "POP & ROCK ITALIANO|POP & ROCK STRANIERO|BALLO LISCIO|DANCE|LATINO AMERICANO|CANTAUTORI|"
    "CANZONE NAPOLETANA|TRADIZIONALE|ANNI 60|ANNI 70|ANNI 80|REVIVAL|JAZZ & SWING|BLUES|COUNTRY|"
    "COLONNE SONORE|NATALE|BAMBINI|MUSICA SACRA|CLASSICA");

// A noun with its article, and the same behind "of": a title is one of the first and one of the
// second.
const QStringList subjects = words(
    "La luna|Il mare|Il vento|La strada|La sera|L'estate|La pioggia|La stella|Il valzer|Il treno|"
    "La piazza|La finestra|Il sogno|Il settembre|La lettera|Il giardino|La chitarra|Il cortile|"
    "La fisarmonica|Il ballo|La domenica|Il faro|La collina|Il ponte|La neve|Il porto|La rosa|"
    "L'aquilone|La barca|Il circo|La giostra|Il tramonto|L'alba|La mazurca|Il tango|La polca|"
    "Il silenzio|La voce|Il fiume|La casa|Il cielo|La spiaggia|Il bosco|La festa|Il mercato|"
    "La promessa|Il sorriso|Lo specchio|La corriera|Il lampione|La cartolina|Il violino|"
    "La rondine|Il gabbiano|La stazione|Il viaggio|La nebbia|Il melograno|La fontana|L'orologio|"
    "Il pianoforte|La ballata|Lo scoglio|La valigia|Il carillon|La ninna nanna|Il marinaio|"
    "La sirena|Il campanile|La vendemmia|L'ombra|Il bolero|La serenata|Il girotondo|La veranda|"
    "Il mattino|La salita|Il sentiero|La lucciola|Il papavero|La lanterna|Il balcone|La fiaba|"
    "Lo swing|La samba|Il cha cha|La rumba|Il blues|La beguine|Il foxtrot");
const QStringList complements = words(
    "di Lucia|di Marina|di Teresa|di Ninetta|di carta|di vetro|di legno|di notte|d'estate|"
    "d'inverno|d'autunno|di primavera|del lago|del faro|del porto|della nonna|del sabato|"
    "della domenica|di seta|di sale|d'argento|a colori|in bianco e nero|senza fine|senza nome|"
    "per te|per noi|per due|con te|lontano da qui|sotto casa|in periferia|al tramonto|all'alba|"
    "a mezzanotte|di maggio|di settembre|di gennaio|dei ricordi|dei desideri|dell'addio|"
    "del ritorno|di provincia|di frontiera|del sud|del nord|in tasca|tra le dita|nel cassetto|"
    "sul mare|sui tetti|nella nebbia|dietro l'angolo|che non c'era|che verrà|di una volta|"
    "ancora una volta|piano piano|e basta|perché no|n. 2|dell'emigrante|del pescatore|"
    "del contadino|della sposa|dei gatti|degli aquiloni|in fa minore|per fisarmonica|"
    "dell'ultima sera|del primo ballo|di nessuno|in ritardo|contromano|a memoria|al contrario|"
    "di cioccolato|del cantastorie|della fortuna|dei vent'anni|con gli occhi chiusi|"
    "di sabbia|in discesa|del mio paese|della via Emilia|del Po|di Romagna|in salita|"
    "dall'altra parte|senza ombrello|con la valigia|del bar di sotto|di Rosina|di Carmela|del "
    "Carnevale|della prateria|del molo vecchio|"
    "senza parole|con la coda|di mezza estate|del primo piano|al chiaro di luna|del buonumore|"
    "sotto l'ombrellone|del liscio");
const QStringList firstNames =
    words("Ada|Aldo|Alba|Amelio|Berto|Bice|Carola|Ciro|Clelia|Dario|Delia|Duilio|Edda|Elmo|Ersilia|"
          "Fausta|Fulgenzio|Gilda|Gino|Ines|Ivo|Lamberto|Leda|Livio|Loris|Lidia|Mirko|Nives|Norma|"
          "Olmo|Oriana|Palmira|Primo|Quinto|Renzo|Rina|Romeo|Sesto|Silvana|Tarcisio|Tullia|Ugo|"
          "Vanda|Vasco|Velia|Wilma|Zelinda|Zeno");
const QStringList lastNames = words(
    "Albarelli|Bellardi|Boschetta|Brandolisi|Calzamiglia|Campostrini|Corvinelli|Dalmazetti|"
    "Dondolini|Fabrucci|Ferrantoni|Fiordisole|Gallarini|Gattomelli|Ghirardesi|Lanzoverdi|"
    "Lucciolani|Malaspinetti|Marangolo|Montanardi|Morbidelli|Nevicati|Ombrellini|Ortolanelli|"
    "Pagliarusco|Passalacqui|Pettirossi|Pianaccioli|Pontelungo|Quercioli|Rastelletti|Roncaglini|"
    "Sabbiadori|Salvaterri|Serenelli|Spinaverdi|Tagliaboschi|Tamburinelli|Tirabassi|"
    "Trentamonti|Valdinucci|Vendramelli|Ventimigli|Zampironi|Zanzarelli|Zuccherini");
const QStringList keys =
    words("C|G|D|A|E|B|F#|F|Bb|Eb|Ab|Db|A -|E -|B -|F# -|C# -|G# -|D -|G -|C -|F -|Bb -|Eb -");
const QStringList irregularKeys = words("C#-|G #| D|A-|");
const QStringList sections = words("Verse|Chorus|Verse|Chorus|Special|Solo|Chorus");

/** The songs of samples/; their texts are those of traditional and historical tunes. */
QVector<CatalogueRow> sampleRows()
{
    const auto text = [](const char *utf8) { return QString::fromUtf8(utf8); };
    const auto row = [&](const char *filename, const char *title, const char *artist,
                         const char *altArtist, const char *genre, const char *author, int length,
                         int bpm, const char *key, const char *markers) -> CatalogueRow {
        return {text(title), text(artist), text(genre),    text(author),  length,
                bpm,         text(key),    text(filename), text(markers), text(altArtist)};
    };
    return {
        row("SANTALUC", "Santa Lucia", "Tradizionale", "Coro di Napoli", "CANZONE NAPOLETANA",
            "Cottrau - Cossovich", 61, 112, "C", "1;Intro;5;Verse 1;21;Chorus 1;37;Fine;"),
        row("FUNICULI", "Funiculì funiculà", "Tradizionale", "Coro di Napoli", "CANZONE NAPOLETANA",
            "Denza - Turco", 52, 132, "D", "1;Intro;5;Verse 1;21;Chorus 1;37;Fine;"),
        row("BELLACIA", "Bella ciao", "Tradizionale", "Coro popolare", "TRADIZIONALE",
            "Tradizionale", 56, 120, "D -", "1;Intro;3;Verse 1;11;Verse 2;19;Verse 3;27;Fine;"),
        row("FRAMARTI", "Fra Martino campanaro", "Tradizionale", "Coro popolare", "TRADIZIONALE",
            "Tradizionale", 55, 96, "G", "1;Intro;5;Verse 1;13;Chorus 1;21;Fine;"),
        row("DONNAMOB", "La donna e mobile", "Tradizionale", "Orchestra da camera", "CLASSICA",
            "Verdi - Piave", 55, 138, "Bb", "1;Intro;9;Verse 1;25;Chorus 1;41;Fine;"),
        row("GREENSLV", "Greensleeves", "Traditional", "Folk ensemble", "POP & ROCK STRANIERO",
            "Traditional", 68, 100, "A -", "1;Intro;5;Verse 1;21;Chorus 1;37;Fine;"),
        row("AULDLANG", "Auld Lang Syne", "Traditional", "Folk ensemble", "POP & ROCK STRANIERO",
            "Burns", 41, 112, "F", "1;Intro;3;Verse 1;11;Chorus 1;19;Fine;"),
    };
}

/** Invents rows; std::mt19937 gives the same numbers everywhere, the distributions of <random> do
 * not. */
class Inventor
{
public:
    explicit Inventor(const QVector<CatalogueRow> &samples)
    {
        for (const CatalogueRow &sample : samples) {
            m_filenames.insert(sample.filename);
            m_altArtists.insert(sample.altArtist);
        }
        makeTitles(static_cast<int>(samples.size()));
        makeArtists();
    }

    CatalogueRow row(int index, bool withGenre, bool withMarkers)
    {
        CatalogueRow row;
        row.title = m_titleList.at(index % m_titleList.size());
        const QStringList &artist =
            m_artistList.at(index < m_artistList.size()
                                ? index
                                : std::min(below(m_artistList.size()), below(m_artistList.size())));
        row.artist = artist.at(0);
        row.altArtist = artist.at(1);
        row.genre = withGenre ? genres.at(index % genres.size()) : QString();
        row.author = author();
        row.length = between(150, 290);
        row.bpm = between(60, 180);
        row.key = below(60) == 0 ? pick(irregularKeys) : pick(keys);
        row.filename = filename(row.title);
        if (withMarkers)
            row.markers = markers();
        return row;
    }

private:
    /** A random number below \a limit, which is a count that fits into 32 bits. */
    template <typename Count> int below(Count limit)
    {
        return static_cast<int>(m_random() % static_cast<unsigned>(limit));
    }
    int between(int lowest, int highest) { return lowest + below(highest - lowest + 1); }
    QString pick(const QStringList &list) { return list.at(below(list.size())); }

    template <typename List> void shuffle(List &list)
    {
        for (auto i = list.size() - 1; i > 0; --i)
            std::swap(list[i], list[below(i + 1)]);
    }

    void makeTitles(int taken)
    {
        for (const QString &subject : subjects) {
            for (const QString &complement : complements)
                m_titleList.append(subject + QLatin1Char(' ') + complement);
        }
        shuffle(m_titleList);
        m_titleList = m_titleList.mid(0, distinctTitles - taken);
    }

    void makeArtists()
    {
        QVector<QStringList> people;
        for (const QString &first : firstNames) {
            for (const QString &last : lastNames)
                people.append({first + QLatin1Char(' ') + last, last + QLatin1Char(' ') + first});
        }
        shuffle(people);
        people.resize(distinctAltArtists - m_altArtists.size());
        m_artistList = people;
    }

    QString author()
    {
        const QString first = pick(lastNames);
        const QString second = pick(lastNames);
        return below(3) == 0 || first == second ? first : first + QStringLiteral(" - ") + second;
    }

    /** The title's letters and digits, cut to what a short name holds and told apart by a number.
     */
    QString filename(const QString &title)
    {
        QString stem;
        for (const QChar c : title.toUpper()) {
            if ((c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
                || (c >= QLatin1Char('0') && c <= QLatin1Char('9')))
                stem.append(c);
        }
        stem = stem.left(between(5, longestFilename));
        QString name = stem;
        for (int n = 2; m_filenames.contains(name); ++n) {
            const QString number =
                (n % 3 == 0 ? QStringLiteral("_") : QString()) + QString::number(n);
            name = stem.left(longestFilename - number.size()) + number;
        }
        m_filenames.insert(name);
        return name;
    }

    QString markers()
    {
        QString text = QStringLiteral("1;Intro;");
        int bar = 1 + 4 * between(1, 2);
        const int count = between(7, 16);
        for (int i = 0; i < count; ++i) {
            text += QStringLiteral("%1;%2 %3;")
                        .arg(bar)
                        .arg(sections.at(i % sections.size()))
                        .arg(i / 2 + 1);
            bar += 8 * between(1, 2);
        }
        return text + QStringLiteral("%1;Fine;").arg(bar);
    }

    std::mt19937 m_random{20161209};
    QStringList m_titleList;
    QVector<QStringList> m_artistList;
    QSet<QString> m_filenames;
    QSet<QString> m_altArtists;
};

} // namespace

QVector<CatalogueRow> makeCatalogueRows()
{
    QVector<CatalogueRow> rows = sampleRows();
    Inventor inventor(rows);
    const int invented = rowCount - static_cast<int>(rows.size());
    for (int i = 0; i < invented; ++i) {
        // Rows without markers or genre are spread evenly.
        const bool withMarkers =
            (i + 1) * rowsWithoutMarkers / invented == i * rowsWithoutMarkers / invented;
        const bool withGenre =
            (i + 1) * rowsWithoutGenre / invented == i * rowsWithoutGenre / invented;
        rows.append(inventor.row(i, withGenre, withMarkers));
    }
    // The ends of what a catalogue holds: the shortest and longest song and name, the slowest and
    // fastest.
    const auto last = rows.size() - 1;
    rows[last].length = shortestLength;
    rows[last - 1].length = longestLength;
    rows[last].bpm = slowestBpm;
    rows[last - 1].bpm = fastestBpm;
    rows[last].filename = QStringLiteral("Q");
    return rows;
}

} // namespace tarvel4

#include "library/jobreport.h"
#include "library/updatepreview.h"
#include "tests/library/updatejobfixture.h"
#include "tests/storage/table.h"

#include <algorithm>

using namespace tarvel4;
using namespace SongBytes;

using Code = Outcome::Code;
using Group = JobReport::Group;
using Job = JobReport::Job;
Q_DECLARE_METATYPE(Group)
Q_DECLARE_METATYPE(Job)
Q_DECLARE_METATYPE(SongOutcome)

namespace {

SongOutcome outcome(const char *path, SongResult result, const Outcome &cause = {},
                    const QVector<FieldChange> &changes = {})
{
    SongOutcome song;
    song.path = text(path);
    song.result = result;
    song.cause = cause;
    song.changes = changes;
    return song;
}

QVector<FieldChange> titleChange()
{
    return {{text("title"), text("a"), text("b")}};
}

/** "NAME: WORD: SENTENCE" of each song. */
QStringList lines(const JobReport &report)
{
    QStringList all;
    for (const JobReport::Entry &entry : report.entries())
        all += SongPath::fileName(entry.path) + text(": ") + report.word(entry.group, true)
            + text(": ") + entry.sentence();
    return all;
}

} // namespace

class tst_JobReport : public QObject, private UpdateJobFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }

    void eachResultHasItsGroup_data();
    void eachResultHasItsGroup();
    void whatASongIsCalledDependsOnTheJob_data();
    void whatASongIsCalledDependsOnTheJob();
    void failuresComeFirstAndTheRestInTheJobsOrder();
    void headingCountsOneAndMany();
    void songsThatNothingWasToldOfAreNotReached();
    void copiesThatLostTheirNameAreNotCountedAsCopied();
    void textHoldsEverySongOnALineOfItsOwn();
    void observerIsHandedEachSong();

    void synchronisationIsReported();
    void cancelledSynchronisationTellsWhatItDidNotReach();
    void previewSaysWhatTheUpdateThenDoes();
    void previewWritesNothing();
    void previewTellsWhatWillBeAsked_data();
    void previewTellsWhatWillBeAsked();
    void cancelledPreviewTellsNothing();
};

void tst_JobReport::eachResultHasItsGroup_data()
{
    Table<SongOutcome, Group, bool, QString>();
    const auto row = [](const char *sentence, const SongOutcome &song, Group group, bool isFailure,
                        const QString &said) {
        QTest::newRow(sentence) << song << group << isFailure << said;
    };
    const Outcome noRoom{Code::NoRoom, text("/s/a.mp3"), {}, {}};
    const Outcome companion{Code::AlreadyExists, text("/card/a.cdg"), {}, {}};
    row("a song read is imported", outcome("/s/a.mid", SongResult::Read), Group::Imported, false,
        {});
    row("an update that changes fields names them",
        outcome("/s/a.mid", SongResult::Updated, {},
                titleChange() << FieldChange{text("genre"), QString(), text("POP")}),
        Group::Updated, false, text("Titolo, Genere"));
    row("an update that changes no field", outcome("/s/a.mid", SongResult::Updated),
        Group::Unchanged, false, text("il catalogo non aggiunge nulla"));
    row("an edited song", outcome("/s/a.mid", SongResult::Edited), Group::Edited, false, {});
    row("a restored song", outcome("/s/a.mid", SongResult::Restored), Group::Restored, false, {});
    row("a copied song", outcome("/s/a.mid", SongResult::Copied), Group::Copied, false, {});
    row("a kept song", outcome("/s/a.mid", SongResult::Kept), Group::Kept, false,
        text("il file che c'era già è rimasto, come hai scelto"));
    row("a song that the catalogue lacks is no failure", outcome("/s/a.mid", SongResult::NotFound),
        Group::NotFound, false, text("non trovata né per nome né per titolo"));
    row("a refused song is no failure", outcome("/s/a.mid", SongResult::Refused), Group::Refused,
        false, text("lasciata com'era, come hai scelto"));
    row("a song that can't be read gives the cause",
        outcome("/s/a.mid", SongResult::Unreadable, {Code::ReadDenied, {}, {}, {}}),
        Group::Unreadable, true, text("manca il permesso di leggerlo"));
    row("a song that failed gives the cause", outcome("/s/a.mp3", SongResult::Failed, noRoom),
        Group::Failed, true, noRoom.sentence());
    row("a companion that failed is named", outcome("/s/a.mp3", SongResult::Failed, companion),
        Group::Companion, true, text("a.cdg: esiste già"));
}

void tst_JobReport::eachResultHasItsGroup()
{
    const auto [song, group, isFailure, said] = cells<SongOutcome, Group, bool, QString>();
    JobReport report(Job::Synchronise);
    report.add(song);
    report.finish({song.path});
    QCOMPARE(report.entries().size(), 1);
    QCOMPARE(report.entries().first().group, group);
    QCOMPARE(report.entries().first().path, song.path);
    QCOMPARE(report.entries().first().sentence(), said);
    QCOMPARE(report.hasFailures(), isFailure);
    QCOMPARE(report.groups(), QVector<Group>{group});
}

void tst_JobReport::whatASongIsCalledDependsOnTheJob_data()
{
    Table<Job, Group, QString>();
    const auto row = [](const char *sentence, Job job, Group group, const char *words) {
        QTest::newRow(sentence) << job << group << text(words);
    };
    row("a synchronisation does not save", Job::Synchronise, Group::Failed,
        "non salvata|non salvate");
    row("an edit does not save", Job::Edit, Group::Failed, "non salvata|non salvate");
    row("a transfer does not copy", Job::Transfer, Group::Failed, "non copiata|non copiate");
    row("an undo does not put back", Job::Undo, Group::Failed,
        "non tornata com'era|non tornate com'erano");
    row("a preview could not save", Job::Preview, Group::Failed, "non salvabile|non salvabili");
    row("a synchronisation has updated", Job::Synchronise, Group::Updated, "aggiornata|aggiornate");
    row("a preview has not yet", Job::Preview, Group::Updated, "da aggiornare|da aggiornare");
}

void tst_JobReport::whatASongIsCalledDependsOnTheJob()
{
    const auto [job, group, words] = cells<Job, Group, QString>();
    const JobReport report(job);
    QCOMPARE(report.word(group, true) + QLatin1Char('|') + report.word(group, false), words);
}

void tst_JobReport::failuresComeFirstAndTheRestInTheJobsOrder()
{
    JobReport report(Job::Synchronise);
    report.add(outcome("/s/b.mid", SongResult::Updated, {}, titleChange()));
    report.add(outcome("/s/x.mid", SongResult::NotFound));
    report.add(outcome("/s/a.mid", SongResult::Updated, {}, titleChange()));
    report.add(outcome("/s/y.mid", SongResult::Failed, {Code::NoRoom, {}, {}, {}}));
    report.finish({});
    QStringList names;
    for (const JobReport::Entry &entry : report.entries())
        names += SongPath::fileName(entry.path);
    QCOMPARE(names, strings({"y.mid", "x.mid", "b.mid", "a.mid"}));
}

void tst_JobReport::headingCountsOneAndMany()
{
    JobReport report(Job::Synchronise);
    QCOMPARE(report.heading(), text("Sincronizzazione: nessuna song"));
    for (int i = 0; i < 120; ++i)
        report.add(outcome("/s/a.mid", SongResult::Updated, {}, titleChange()));
    for (int i = 0; i < 3; ++i)
        report.add(outcome("/s/b.mid", SongResult::NotFound));
    report.add(outcome("/s/c.mid", SongResult::Failed, {Code::NoRoom, {}, {}, {}}));
    report.finish({});
    QCOMPARE(report.heading(),
             text("Sincronizzazione: 1 non salvata, 3 non nel catalogo, 120 aggiornate"));
    QCOMPARE(report.count(Group::Updated), 120);
    QCOMPARE(report.count(Group::Kept), 0);
}

void tst_JobReport::songsThatNothingWasToldOfAreNotReached()
{
    JobReport report(Job::Import);
    report.add(outcome("/s/twice.mid", SongResult::Read));
    report.finish(strings({"/s/twice.mid", "/s/twice.mid", "/s/c.mid"}));
    QCOMPARE(
        lines(report),
        strings({"twice.mid: non raggiunta: il lavoro si è fermato prima",
                 "c.mid: non raggiunta: il lavoro si è fermato prima", "twice.mid: importata: "}));
    QVERIFY2(!report.hasFailures(), "a job that the user stopped has not failed");
}

void tst_JobReport::copiesThatLostTheirNameAreNotCountedAsCopied()
{
    JobReport report(Job::Transfer);
    report.add(outcome("/one/a.mid", SongResult::Copied));
    report.add(outcome("/two/a.mid", SongResult::Copied));
    report.add(outcome("/two/b.mid", SongResult::Kept));
    report.displace(strings({"/one/a.mid", "/two/b.mid"}));
    report.addMemory(text("l'indice è danneggiato"));
    report.finish({});
    QCOMPARE(report.heading(),
             text("Trasferimento: 1 problema della memoria, 1 già presente, 1 sostituita, "
                  "1 copiata"));
    QVERIFY(report.hasFailures());
}

void tst_JobReport::textHoldsEverySongOnALineOfItsOwn()
{
    const QDateTime time(QDate(2026, 12, 24), QTime(18, 5));
    JobReport report(Job::Synchronise, time);
    report.add(outcome("/s/b.mid", SongResult::Updated, {}, titleChange()));
    report.add(outcome("/s/two\nlines.mid", SongResult::NotFound));
    report.add(outcome("/s/y.mid", SongResult::Unreadable, {Code::ReadDenied, {}, {}, {}}));
    report.finish({});
    QCOMPARE(report.asText(),
             text("Sincronizzazione: 1 non letta, 1 non nel catalogo, 1 aggiornata\n")
                 + QLocale::system().toString(time, QLocale::ShortFormat)
                 + text("\n\n1 non letta\n  /s/y.mid: manca il permesso di leggerlo\n"
                        "\n1 non nel catalogo\n  /s/two\uFFFDlines.mid: non trovata né per nome né "
                        "per titolo\n"
                        "\n1 aggiornata\n  /s/b.mid: Titolo\n"));
}

void tst_JobReport::observerIsHandedEachSong()
{
    JobReport report(Job::Import);
    QStringList seen;
    const SongObserver observer =
        report.observe([&seen](const SongOutcome &song) { seen += song.path; });
    observer(outcome("/s/a.mid", SongResult::Read));
    observer(outcome("/s/b.mid", SongResult::Unreadable, {Code::NotASong, {}, {}, {}}));
    QCOMPARE(seen, strings({"/s/a.mid", "/s/b.mid"}));
    QCOMPARE(report.entries().size(), 2);
    report.observe()(outcome("/s/c.mid", SongResult::Read)); // nobody else is told
    QCOMPARE(report.entries().size(), 3);
}

void tst_JobReport::synchronisationIsReported()
{
    m_library->add(text("one.mid"), makersSong());
    m_library->add(text("nobody.mid"), makersSong());
    m_library->add(text("two.mid"), midi0(meta(3, "x")));
    const QString gone = m_library->add(text("three.mid"), makersSong());
    m_library->import();
    QFile::remove(gone);
    m_library->host().notPublishedAnswers = {Answer::No};
    JobReport report(Job::Synchronise);
    update({}, Disk::real(), report.observe());
    report.finish(m_library->files());
    const Outcome notFound{Code::NotFound, {}, {}, {}};
    QCOMPARE(
        lines(report),
        QStringList({text("three.mid: non letta: ") + notFound.sentence(),
                     text("nobody.mid: non nel catalogo: non trovata né per nome né per titolo"),
                     text("two.mid: non pubblicata da K-Varo: lasciata com'era, come hai "
                          "scelto"),
                     text("one.mid: aggiornata: Titolo, Interprete, Genere, Autore, Durata, "
                          "Tempo (BPM), Tonalità, Marker")}));
}

void tst_JobReport::cancelledSynchronisationTellsWhatItDidNotReach()
{
    for (const char *name : {"one.mid", "two.mid", "three.mid"})
        m_library->add(text(name), makersSong());
    m_library->import();
    m_library->host().cancelAtProgress = 1;
    JobReport report(Job::Synchronise);
    update({}, Disk::real(), report.observe());
    report.finish(m_library->files());
    QCOMPARE(report.heading(), text("Sincronizzazione: 2 non raggiunte, 1 aggiornata"));
    QVERIFY(!report.hasFailures());
}

void tst_JobReport::previewSaysWhatTheUpdateThenDoes()
{
    m_library->add(text("one.mid"), makersSong("a"));
    m_library->add(text("nobody.mid"), makersSong("b"));
    m_library->add(text("two.mp3"), tag(frame("TCOP", "K-VARO") + frame("TIT2", "x")) + audio());
    m_library->import();
    const auto plan = UpdatePreview(m_library->db(), m_library->host(), m_library->host())
                          .run(m_library->files(), true);
    QVERIFY(plan);
    QCOMPARE(plan->heading(),
             text("Anteprima della sincronizzazione: 2 da aggiornare, 1 non nel catalogo"));
    JobReport done(Job::Synchronise);
    update({}, Disk::real(), done.observe());
    done.finish(m_library->files());
    QCOMPARE(done.entries().size(), plan->entries().size());
    for (const JobReport::Entry &real : done.entries()) {
        const auto found = std::find_if(
            plan->entries().cbegin(), plan->entries().cend(),
            [&real](const JobReport::Entry &entry) { return entry.path == real.path; });
        QVERIFY(found != plan->entries().cend());
        const JobReport::Entry &planned = *found;
        QCOMPARE(real.group, planned.group);
        QCOMPARE(real.changes.size(), planned.changes.size());
        for (int change = 0; change < real.changes.size(); ++change) {
            QCOMPARE(real.changes.at(change).field, planned.changes.at(change).field);
            QCOMPARE(real.changes.at(change).before, planned.changes.at(change).before);
            QCOMPARE(real.changes.at(change).after, planned.changes.at(change).after);
        }
    }
}

void tst_JobReport::previewWritesNothing()
{
    const QString song = m_library->add(text("one.mid"), makersSong());
    m_library->import();
    const QByteArray before = TestFiles::read(song);
    const QDateTime time(QDate(2020, 1, 2), QTime(3, 4));
    TestFiles::setModified(song, time);
    const QString folder = QFileInfo(song).path();
    const QStringList names = TestFiles::namesIn(folder);
    QVERIFY(UpdatePreview(m_library->db(), m_library->host(), m_library->host())
                .run(m_library->files(), false));
    QCOMPARE(TestFiles::read(song), before);
    QCOMPARE(QFileInfo(song).lastModified(), time);
    QCOMPARE(TestFiles::namesIn(folder), names);
    QCOMPARE(m_library->statuses(), QVector<int>{listed});
    QCOMPARE(m_library->host().eventsOf(text("ask")), QStringList());
    QCOMPARE(m_library->host().eventsOf(text("begin")),
             strings({"begin Anteprima|Cerco che cosa cambierebbe...|Interrompi|1"}));
}

void tst_JobReport::previewTellsWhatWillBeAsked_data()
{
    const Table<bool, QString> row;
    row("where the synchronisation asks, what it asks about", true,
        "Anteprima della sincronizzazione: 1 da confermare, 2 da aggiornare, 1 non nel catalogo");
    row("where it asks nothing, what it changes", false,
        "Anteprima della sincronizzazione: 3 da aggiornare, 1 non nel catalogo");
}

void tst_JobReport::previewTellsWhatWillBeAsked()
{
    const auto [asks, heading] = cells<bool, QString>();
    m_library->add(text("one.mid"), makersSong());
    m_library->add(text("three.mid"), makersSong());
    m_library->add(text("two.mid"), midi0(meta(2, "someone")));
    m_library->add(text("nobody.mid"), midi0(meta(2, "someone")));
    m_library->import();
    const auto plan = UpdatePreview(m_library->db(), m_library->host(), m_library->host())
                          .run(m_library->files(), asks);
    QVERIFY(plan);
    QCOMPARE(plan->heading(), heading);
    QCOMPARE(m_library->host().eventsOf(text("ask")), QStringList());
}

void tst_JobReport::cancelledPreviewTellsNothing()
{
    for (const char *name : {"one.mid", "two.mid"})
        m_library->add(text(name), makersSong());
    m_library->import();
    m_library->host().cancelAtProgress = 1;
    UpdatePreview preview(m_library->db(), m_library->host(), m_library->host());
    QVERIFY(!preview.run(m_library->files(), true));
    QVERIFY(!preview.run({}, true));
}

QTEST_GUILESS_MAIN(tst_JobReport)
#include "tst_jobreport.moc"

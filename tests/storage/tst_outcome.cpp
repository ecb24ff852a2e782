#include "storage/outcome.h"

#include "tests/storage/textliteral.h"
#include "tests/storage/unixfile.h"

#include <QDir>
#include <QStorageInfo>
#include <QTranslator>
#include <QtTest>

#include <cerrno>

using namespace tarvel4;

using Code = Outcome::Code;
Q_DECLARE_METATYPE(Code)

namespace {

/** Not every system limits what a user may write. */
QVector<int> fullDisk()
{
#ifdef EDQUOT
    return {ENOSPC, EDQUOT};
#else
    return {ENOSPC};
#endif
}

} // namespace

/** How a failure is called. */
class tst_Outcome : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachCodeHasItsNameAndASentenceInBothLanguages()
    {
        const QStringList codeNames = words(
            "not-found not-a-file read-denied not-a-song damaged-song damaged-index other-format "
            "text-too-long letter-not-storable too-large no-markers changed-meanwhile write-denied "
            "read-only-volume no-room medium-failed name-too-long already-exists in-use "
            "link-out-of-memory refused-target not-confirmed not-restored");
        QStringList found;
        QStringList sentences;
        for (const char *language : {"it", "en"}) {
            QTranslator translator;
            QVERIFY(translator.load(":/trans/tarvel4soft_"_s + QLatin1String(language)));
            QCoreApplication::installTranslator(&translator);
            found.clear();
            Outcome outcome{Code::NotFound, {}, "why"_s, {}};
            for (; !outcome.codeName().isEmpty();
                 outcome.code = Code(static_cast<int>(outcome.code) + 1)) {
                outcome.detail = outcome == Code::ChangedMeanwhile ? QString() : "why"_s;
                found.append(outcome.codeName());
                sentences.append(outcome.sentence());
                QVERIFY2(!outcome.sentence().contains(QLatin1Char('%')),
                         qPrintable(outcome.sentence()));
            }
            QCOMPARE(found, codeNames);
        }
        QVERIFY(!sentences.contains(QString()));
        QCOMPARE(QSet<QString>(sentences.begin(), sentences.end()).size(), 2 * codeNames.size());
    }

    void theMessageIsThePathAndTheSentence()
    {
        Outcome outcome{Code::TooLarge, "/a.mid"_s, "why"_s, {}};
        QCOMPARE(outcome.message(), QStringLiteral("/a.mid: è troppo grande: why"));
        outcome.path.clear();
        QCOMPARE(outcome.message(), QStringLiteral("è troppo grande: why"));
        QVERIFY(!outcome && outcome == Code::TooLarge && outcome != Code::NoRoom);
        outcome.code = Code::ChangedMeanwhile;
        QCOMPARE(outcome.message(), "why"_s);
        QVERIFY(Outcome() && Outcome().sentence().isEmpty() && Outcome().codeName().isEmpty()
                && Outcome().systemWords().isEmpty());
    }

    void aReadOnlyVolumeIsNamed_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("volume");
        const QString root = QStorageInfo::root().displayName();
        QTest::newRow("by what a file stands on") << "/proc/self/status"_s
                                                  << "/proc"_s;
        QTest::newRow("by the folder of a file that is to be made") << "/proc/new.mid"_s
                                                                    << "/proc"_s;
        QTest::newRow("the system's own disk") << QDir::rootPath() + "new.mid"_s << root;
        QTest::newRow("not at all where nothing is there") << "/gone/new.mid"_s << QString();
        QTest::newRow("not at all without a path") << QString() << QString();
    }
    void aReadOnlyVolumeIsNamed()
    {
        QFETCH(QString, path);
        QFETCH(QString, volume);
        SKIP_WITHOUT_UNIX(path.startsWith("/proc"_s), "/proc");
        const Outcome outcome = Outcome::ofSystemError(EROFS, path);
        QCOMPARE(outcome.detail, volume);
        QCOMPARE(outcome.sentence().contains(" (%1)"_s.arg(volume)), !volume.isEmpty());
        QVERIFY(!outcome.sentence().contains("%1"_s));
    }

    void ofSystemError_data()
    {
        QTest::addColumn<QVector<int>>("errors");
        QTest::addColumn<bool>("isWriting");
        QTest::newRow("not-found") << QVector<int>{ENOENT, ENOTDIR} << false;
        QTest::newRow("not-a-file") << QVector<int>{EISDIR} << false;
        QTest::newRow("read-denied") << QVector<int>{EACCES, EPERM} << false;
        QTest::newRow("write-denied") << QVector<int>{EACCES, EPERM} << true;
        QTest::newRow("read-only-volume") << QVector<int>{EROFS} << true;
        QTest::newRow("no-room") << fullDisk() << true;
        QTest::newRow("too-large") << QVector<int>{EFBIG} << true;
        QTest::newRow("name-too-long") << QVector<int>{ENAMETOOLONG} << true;
        QTest::newRow("already-exists") << QVector<int>{EEXIST} << true;
        QTest::newRow("in-use") << QVector<int>{EBUSY, ETXTBSY} << true;
        QTest::newRow("link-out-of-memory") << QVector<int>{ELOOP} << true;
        QTest::newRow("medium-failed") << QVector<int>{EIO, ENODEV} << true;
    }
    void ofSystemError()
    {
        QFETCH(QVector<int>, errors);
        QFETCH(bool, isWriting);
        for (const int error : errors) {
            const Outcome outcome = Outcome::ofSystemError(error, "/a"_s, isWriting);
            QCOMPARE(outcome.codeName(), QString::fromLatin1(QTest::currentDataTag()));
            QCOMPARE(outcome.path, "/a"_s);
            QCOMPARE(outcome.systemWords(), qt_error_string(error));
            if (outcome == Code::MediumFailed)
                QCOMPARE(outcome.detail, qt_error_string(error));
            QCOMPARE(outcome.detail.isEmpty(),
                     outcome != Code::MediumFailed && outcome != Code::TooLarge
                         && outcome != Code::ReadOnlyVolume);
        }
    }
};

QTEST_GUILESS_MAIN(tst_Outcome)
#include "tst_outcome.moc"

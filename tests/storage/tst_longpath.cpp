#include "storage/windowshandle.h"
#include "tests/storage/foldertest.h"

using namespace tarvel4;

/** The form of a path in which a call of Windows takes more than 260 characters. */
class tst_LongPath : public FolderTest
{
    Q_OBJECT

private Q_SLOTS:
    void isInFullWithItsPrefix_data()
    {
        const Table<QString, QString> row;
        row("a path of ours", "T:/a/b.mid", R"(\\?\T:\a\b.mid)");
        row("one with backslashes", R"(T:\a\b.mid)", R"(\\?\T:\a\b.mid)");
        row("dots are resolved, which the prefix forbids", "T:/x/../a/./b.mid",
            R"(\\?\T:\a\b.mid)");
        row("the root of a drive", "E:/", R"(\\?\E:\)");
        row("a share of the network", "//server/share/a.mid", R"(\\?\UNC\server\share\a.mid)");
        row("a device", R"(\\.\C:)", R"(\\.\C:)");
        const QString longName(255, QLatin1Char('n'));
        row("longer than 260 characters", "T:/"_s + longName + QLatin1Char('/') + longName,
            QStringLiteral(R"(\\?\T:\)") + longName + QLatin1Char('\\') + longName);
    }
    void isInFullWithItsPrefix()
    {
        const auto [path, full] = cells<QString, QString>();
        QCOMPARE(longPath(path), full);
    }

    void isThatOfARelativePathToo()
    {
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(path()));
        const QString full = longPath("a/b.mid"_s);
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(full, longPath(path("a/b.mid")));
    }
};

QTEST_GUILESS_MAIN(tst_LongPath)
#include "tst_longpath.moc"

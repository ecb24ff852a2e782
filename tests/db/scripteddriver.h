#pragma once

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlRecord>
#include <QSqlResult>
#include <QVariant>

namespace tarvel4 {

/** Stands in for SQLite's driver while it lives, to fail where SQLite itself can't be made to. */
class ScriptedDriver
{
public:
    ScriptedDriver() { QSqlDatabase::registerSqlDriver("QSQLITE"_s, new Creator); }
    ~ScriptedDriver() { QSqlDatabase::registerSqlDriver("QSQLITE"_s, nullptr); }
    Q_DISABLE_COPY(ScriptedDriver)

    static inline QString failingConnection; ///< the database name that can't be opened
    static inline QString failingStatement; ///< statements that begin with it fail
    static inline QString count; ///< what a count gives
    static inline QStringList statements; ///< those that were executed

private:
    /** One row of ten cells, each of them "x"; a count gives the scripted text. */
    class Result : public QSqlResult
    {
    public:
        explicit Result(const QSqlDriver *driver)
            : QSqlResult(driver)
        {}

    protected:
        QVariant data(int) override { return m_isCount ? count : "x"_s; }
        bool isNull(int) override { return false; }
        bool reset(const QString &statement) override
        {
            statements.append(statement);
            const bool fails =
                !failingStatement.isEmpty() && statement.startsWith(failingStatement);
            m_isCount = statement.startsWith("SELECT count"_s);
            setSelect(true);
            setActive(!fails);
            setAt(QSql::BeforeFirstRow);
            return !fails;
        }
        bool fetch(int row) override
        {
            if (row != 0)
                return false;
            setAt(row);
            return true;
        }
        bool fetchFirst() override { return fetch(0); }
        bool fetchLast() override { return fetch(0); }
        int size() override { return -1; }
        int numRowsAffected() override { return -1; }
        QSqlRecord record() const override { return {}; }

    private:
        bool m_isCount = false;
    };

    class Driver : public QSqlDriver
    {
    public:
        bool hasFeature(DriverFeature) const override { return false; }
        bool open(const QString &database, const QString &, const QString &, const QString &, int,
                  const QString &) override
        {
            const bool opens = failingConnection.isEmpty() || database != failingConnection;
            setOpen(opens);
            setOpenError(!opens);
            return opens;
        }
        void close() override { setOpen(false); }
        QSqlResult *createResult() const override { return new Result(this); }
    };

    class Creator : public QSqlDriverCreatorBase
    {
    public:
        QSqlDriver *createObject() const override { return new Driver; }
    };
};

} // namespace tarvel4

#include "cli/wildcards.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tarvel4 {

namespace {

bool hasWildcard(const QString &name)
{
    return name.contains(QLatin1Char('*')) || name.contains(QLatin1Char('?'));
}

/** Whether \a name is what \a pattern says, whatever the case. */
bool matches(const QString &pattern, const QString &name)
{
    int p = 0;
    int n = 0;
    int star = -1; // the last one, to which the search goes back
    int begin = 0; // of what it stands for
    while (n < name.size()) {
        if (p < pattern.size() && pattern.at(p) == QLatin1Char('*')) {
            star = p++;
            begin = n;
        } else if (p < pattern.size()
                   && (pattern.at(p) == QLatin1Char('?')
                       || pattern.at(p).toCaseFolded() == name.at(n).toCaseFolded())) {
            ++p;
            ++n;
        } else if (star >= 0) {
            p = star + 1;
            n = ++begin;
        } else {
            return false;
        }
    }
    return std::all_of(pattern.begin() + p, pattern.end(),
                       [](QChar letter) { return letter == QLatin1Char('*'); });
}

/** The names below \a folder, which ends with a slash or is empty, that \a pattern says. */
QStringList namesIn(const QString &folder, const QString &pattern)
{
    const QLatin1Char dot('.');
    QStringList names =
        QDir(folder.isEmpty() ? QStringLiteral(".") : folder)
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Unsorted);
    const auto isOther = [&](const QString &name) {
        return (name.startsWith(dot) && !pattern.startsWith(dot)) || !matches(pattern, name);
    };
    names.erase(std::remove_if(names.begin(), names.end(), isOther), names.end());
    std::sort(names.begin(), names.end(), [](const QString &a, const QString &b) {
        const int order = a.compare(b, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : a < b;
    });
    return names;
}

/** What \a rest names below \a folder, step by step. */
void expand(const QString &folder, const QString &rest, QStringList &paths)
{
    const auto slash = rest.indexOf(QLatin1Char('/'));
    const QString step = slash < 0 ? rest : rest.left(slash);
    const QString after = slash < 0 ? QString() : rest.mid(slash + 1);
    if (!hasWildcard(rest)) {
        if (QFileInfo::exists(folder + rest))
            paths += folder + rest;
    } else if (!hasWildcard(step)) {
        expand(folder + step + QLatin1Char('/'), after, paths);
    } else {
        const QStringList names = namesIn(folder, step);
        for (const QString &name : names) {
            if (slash < 0)
                paths += folder + name;
            else if (QFileInfo(folder + name).isDir())
                expand(folder + name + QLatin1Char('/'), after, paths);
        }
    }
}

} // namespace

bool Wildcards::areIn(const QString &path)
{
    return hasWildcard(path) && !QFileInfo::exists(path);
}

QStringList Wildcards::expanded(const QString &path)
{
    QStringList paths;
    const bool hasDrive = path.size() > 1 && path.at(1) == QLatin1Char(':');
    expand(hasDrive ? path.left(2) : QString(), hasDrive ? path.mid(2) : path, paths);
    return paths.isEmpty() ? QStringList(path) : paths;
}

} // namespace tarvel4

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace tarvel4 {

/** What a search looks at, by the songs' ids: folded once, with the answers of the last search. */
class SearchTexts
{
public:
    void insert(int id, const QStringList &texts);
    bool contains(int id) const { return m_texts.contains(id); }
    void remove(int id);
    void clear();

    /** True where a song's texts have all of the words, which are folded. */
    bool matches(int id, const QStringList &words);

private:
    QHash<int, QString> m_texts;
    QStringList m_words; ///< of the last search
    QHash<int, bool> m_found; ///< its answers: a sort asks again
};

} // namespace tarvel4

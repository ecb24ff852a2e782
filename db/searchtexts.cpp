#include "db/searchtexts.h"

#include "db/foldedtext.h"

#include <algorithm>

namespace tarvel4 {

/** A line break keeps a word from reaching over two texts. */
void SearchTexts::insert(int id, const QStringList &texts)
{
    m_texts.insert(id, FoldedText::of(texts.join(QLatin1Char('\n'))));
    m_found.remove(id);
}

void SearchTexts::remove(int id)
{
    m_texts.remove(id);
    m_found.remove(id);
}

void SearchTexts::clear()
{
    m_texts.clear();
    m_found.clear();
}

bool SearchTexts::matches(int id, const QStringList &words)
{
    if (m_words != words) {
        m_words = words;
        m_found.clear();
    }
    const auto known = m_found.constFind(id);
    if (known != m_found.constEnd())
        return *known;
    const QString text = m_texts.value(id);
    const bool isFound = std::all_of(words.begin(), words.end(),
                                     [&text](const QString &word) { return text.contains(word); });
    m_found.insert(id, isFound);
    return isFound;
}

} // namespace tarvel4

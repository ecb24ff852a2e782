#pragma once

#include <QTextBrowser>

namespace tarvel4 {

/** Shows a page whose pictures never need more than its width, and finds words in it. */
class HelpView : public QTextBrowser
{
    Q_OBJECT

public:
    explicit HelpView(QWidget *parent = nullptr);

    /** The page has an anchor "top", to which the way back leads. */
    void setPage(const QString &html);

    /** Lays the page out with the pictures and the style sheet of now; what is in sight stays. */
    void layOutAgain();

    enum class Direction { Next, Previous };
    /** Selects the next place with \a words, without regard to case and accents; goes on at the
     * other end of the page. One that is selected already is passed by only if \a goesOn. */
    bool findWords(const QString &words, Direction direction, bool goesOn = true);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    QVariant loadResource(int type, const QUrl &name) override;

private:
    /** What the reader has in sight, and what is selected. */
    struct Place
    {
        bool isAtTop;
        int top; ///< the letter in the first line
        int offset; ///< of that line to the view's top: a picture makes a line high
        int anchor;
        int position;
    };

    void showPage();
    Place place() const;
    void layOutAt(const Place &place);

    QString m_page;
    int m_fittedWidth = 0;
    bool m_isAtTop = false; ///< where the page is to begin when it is shown
};

} // namespace tarvel4

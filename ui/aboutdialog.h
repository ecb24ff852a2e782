#pragma once

#include <QDialog>
#include <QLocale>

#include <memory>

namespace tarvel4 {

namespace Ui {
class AboutDialog;
}

/** Tells the program's version, its maker and where help is to be had. */
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit AboutDialog(QWidget *parent = nullptr);
    ~AboutDialog() override;

    /** The short date of a compiler's date text, such as "Dec  9 2016". */
    static QString buildDate(const QString &compilerDate, const QLocale &locale);

private:
    std::unique_ptr<Ui::AboutDialog> ui;
};

} // namespace tarvel4

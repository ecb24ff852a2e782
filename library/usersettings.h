#pragma once

#include <QString>

namespace tarvel4 {

/** The five settings of the program, each with its default; every call goes to the platform's
 * settings store. */
namespace UserSettings {

constexpr char organisation[] = "kvaro";
constexpr char application[] = "tarvel4soft";

/** Where the journal of changes is kept: the user's own data folder of the program and of its
 * command line. */
QString dataFolder();

/** "it", "en", "de"; \a fallback when never chosen. */
QString language(const QString &fallback);
void setLanguage(const QString &language);

bool logEnabled();
void setLogEnabled(bool enabled);

bool logClear();
void setLogClear(bool clear);

bool copyrightAsk(bool fallback = true);
void setCopyrightAsk(bool ask);

QString mediaRoot();
void setMediaRoot(const QString &root);

} // namespace UserSettings

} // namespace tarvel4

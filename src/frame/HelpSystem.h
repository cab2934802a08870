// The application-wide help file and the jump to a topic. Help is shipped
// as HTML (the operation manual and the user manual, one anchor per screen
// name); a file name ending in .HLP, as dlyx.INI names the manuals, is
// served by the shipped HTML manual of the same base name.
#pragma once

#include <QString>
#include <functional>

namespace tarvin {

class HelpSystem {
public:
    static QString helpFile();
    static void setHelpFile(const QString& file);

    // Opens the current help file at the topic. A help file that cannot be
    // found is reported with a message box.
    static void showTopic(const QString& topic);

    // The HTML document a help file name stands for: an existing .html/.htm
    // file as given (relative to the current folder), else the shipped
    // manual with the same base name; empty when there is none.
    static QString resolve(const QString& file);

    // Tests replace the viewer to see which file and topic were asked for.
    using Viewer = std::function<void(const QString& file, const QString& topic)>;
    static Viewer setViewer(Viewer viewer);
};

}  // namespace tarvin

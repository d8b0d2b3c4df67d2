#pragma once

#include <QString>

#include <optional>

namespace quillmere {

// The one seam for message and input boxes. It is passed in, so that a test can answer from a script.
class Prompts
{
public:
    enum class Icon { Information, Critical };

    virtual ~Prompts() = default;
    // A Yes/No question with the question icon; true for Yes. Closing the box means No.
    virtual bool ask(const QString &title, const QString &text) = 0;
    // The same with facts below the question, in a smaller voice.
    virtual bool askAbout(const QString &title, const QString &text, const QString & /*facts*/)
    {
        return ask(title, text);
    }
    // The same where Enter says No: for what a person would hardly want.
    virtual bool askWarily(const QString &title, const QString &text) { return ask(title, text); }
    // A message with an OK button.
    virtual void tell(const QString &title, const QString &text, Icon icon) = 0;
    // A line of text, or nothing on Cancel.
    virtual std::optional<QString> input(const QString &title, const QString &prompt,
                                         const QString &preset) = 0;
    // The path of a file that is to be read, or written, or nothing on Cancel. Who would write over a file
    // is asked. `preset` is a folder, or a path; `filters` are those of a file dialog.
    enum class FileFor { Reading, Writing };
    virtual std::optional<QString> chooseFile(FileFor purpose, const QString &title, const QString &preset,
                                              const QString &filters) = 0;
};

} // namespace quillmere

#pragma once

#include "browser/PageForm.h"

namespace quillmere {

// What is in the browser's document, as far as this is known for certain.
class ShownPage
{
public:
    void forget() { *this = {}; }
    void set(std::optional<PageTree> tree);
    bool isKnown() const { return m_tree.has_value(); }
    // Null where it is not known. After steps, the document with the numbers of the last one; only its sheet
    // is still that of the page before them.
    const PageTree *tree();

    // From here on it goes by numbers: it is this page, whose marks have these values. False where it is not.
    bool beginSteps(const QString &marked, const QStringList &values);
    // What is to be done for these values; nothing where that page has to be written.
    std::optional<PageForm::Step> step(const QStringList &values);

private:
    std::optional<PageTree> m_tree; // before the first step
    std::optional<PageForm> m_form;
    QStringList m_values;
};

} // namespace quillmere

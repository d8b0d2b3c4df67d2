#include "browser/ShownPage.h"

#include <utility>

namespace quillmere {

void ShownPage::set(std::optional<PageTree> tree)
{
    forget();
    m_tree = std::move(tree);
}

const PageTree *ShownPage::tree()
{
    if (m_form) {
        const QString page = m_form->page(m_tree->sheet(), m_values);
        set(PageTree::read(page));
    }
    return m_tree ? &*m_tree : nullptr;
}

bool ShownPage::beginSteps(const QString &marked, const QStringList &values)
{
    const PageTree *is = tree();
    std::optional<PageForm> form = is ? PageForm::read(marked) : std::nullopt;
    if (!form || form->page(values) != is->text())
        return false;
    m_form = std::move(form);
    m_values = values;
    return true;
}

std::optional<PageForm::Step> ShownPage::step(const QStringList &values)
{
    std::optional<PageForm::Step> step = m_form ? m_form->step(m_values, values) : std::nullopt;
    if (step)
        m_values = values;
    return step;
}

} // namespace quillmere

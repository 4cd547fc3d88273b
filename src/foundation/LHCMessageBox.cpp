#include "foundation/LHCMessageBox.h"

#include <utility>

#include "platform/MessageBox.h"

namespace {

/// Null for the default. Never destroyed: objects of the application that go down last may still show a box.
LHCMessageBox::Presenter * gopPresenter = nullptr;

}  // namespace

void LHCMessageBox::SetPresenter(Presenter presenter)
{
    Presenter * const next = presenter ? new Presenter(std::move(presenter)) : nullptr;
    delete std::exchange(gopPresenter, next);
}

int LHCMessageBox::Show(LCString const & text, LCString const & caption, unsigned int style)
{
    if (gopPresenter != nullptr) {
        Presenter const presenter = *gopPresenter;  // it may put another in its own place
        return presenter(text, caption, style);
    }
    bool const question = style == civStyle_YesNo;
    bool const yes = qrtcl::platform::AskOnTerminal(text.str(), caption.str(), question);
    if (!question) return civAnswer_Ok;
    return yes ? civAnswer_Yes : civAnswer_No;
}

#pragma once

#include <functional>

#include "foundation/Export.h"
#include "foundation/LCString.h"

/// The modal box behind the library's default dialogs: shows a text, waits for the user, and gives the
/// answer.
///
/// An application puts its own dialog there once, before threads may show one. Without that, the terminal is
/// asked if the process is in the foreground of one. Else nothing waits: caption and text go to standard
/// error, and the answer is the safe one, No.
class QRTCL_API LHCMessageBox {
public:
    // Styles.
    static constexpr unsigned int civStyle_Ok = 0;
    static constexpr unsigned int civStyle_YesNo = 4;
    // Answers.
    static constexpr int civAnswer_Ok = 1;
    static constexpr int civAnswer_Yes = 6;
    static constexpr int civAnswer_No = 7;

    /// Gets the text, the caption and one of the styles, and gives one of the answers. It runs on the thread
    /// that shows the box.
    using Presenter = std::function<int(LCString const & text, LCString const & caption, unsigned int style)>;

    /// The empty function puts the default back.
    static void SetPresenter(Presenter presenter);

    static int Show(LCString const & text, LCString const & caption, unsigned int style);
};

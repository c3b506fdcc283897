#include "host/DialogFixture.h"

namespace zv::test {

const Events kDialogFound = {kAttach,
                             "App.Version",
                             kAttach,
                             "App.ActiveDocument",
                             "ActiveDocument.GetVariable('filedia')",
                             "ActiveDocument.SetVariable('Filedia', 0)",
                             "hide"};
const Events kHostShown = {"App.Caption",
                           "activate Scripted Host",
                           "App.Visible = True",
                           "App.Caption",
                           "activate Scripted Host",
                           "ActiveDocument.ActiveSpace",
                           "ActiveDocument.ObjectSnapMode"};

void DialogFixture::Dialog::end(DialogEnd how)
{
    const char* const names[] = {"done", "again", "again as called"};
    m_events.push_back(names[std::size_t(how)]);
}

void DialogFixture::Dialog::markField(XrefField field)
{
    m_events.push_back("mark " + std::to_string(int(field)));
}

} // namespace zv::test

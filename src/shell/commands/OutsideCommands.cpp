#include "shell/commands/OutsideCommands.h"

#include "platform/Paths.h"
#include "platform/Product.h"
#include "platform/SpecialFolders.h"
#include "shell/outside/Calculator.h"
#include "shell/outside/HelpPages.h"
#include "shell/outside/SystemInformation.h"
#include "shell/outside/frmAbout.h"
#include "widgets/OpenOutside.h"

#include <QDir>
#include <QUrl>
#include <QUrlQuery>

namespace {

// Codes of special folders.
enum FolderCode { System = -1, Desktop = 0, Windows = 1, Documents = 5 };

/// A folder that has no name or is not there: the file manager opens on the folder of the user, as it would by itself.
void openFolder(FolderCode code) {
    const QString folder = specialFolder(code);
    OpenOutside::folder(IsFolderPath(folder) ? folder : QDir::homePath());
}

}  // namespace

OutsideCommands::OutsideCommands(QWidget& window, Prompts& prompts, const HelpPages& help, const QString& programFolder,
                                 const QString& shareFolder)
    : m_window(window), m_prompts(prompts), m_help(help), m_programFolder(programFolder), m_shareFolder(shareFolder) {}

void OutsideCommands::StartCalculator() {
    Calculator::start();
}

void OutsideCommands::OpenWindowsDirectory() {
    openFolder(Windows);
}

void OutsideCommands::OpenSystemDirectory() {
    openFolder(System);
}

void OutsideCommands::OpenDesktop() {
    openFolder(Desktop);
}

void OutsideCommands::OpenMyDocuments() {
    openFolder(Documents);
}

void OutsideCommands::ShowHelp() {
    m_help.show(u"main.html"_qs);
}

void OutsideCommands::OpenWebSite() {
    OpenOutside::address(QUrl(Product::webAddress()));
}

void OutsideCommands::SendEmail() {
    QUrl mail;
    mail.setScheme(u"mailto"_qs);
    mail.setPath(Product::mailAddress());
    QUrlQuery query;
    query.addQueryItem(u"subject"_qs, u"Quillmark Support"_qs);
    mail.setQuery(query);
    OpenOutside::address(mail);
}

void OutsideCommands::ShowAbout() {
    const SystemInformation information(m_programFolder, m_shareFolder);
    frmAbout([&information] { return information.text(); }, m_prompts, &m_window).exec();
}

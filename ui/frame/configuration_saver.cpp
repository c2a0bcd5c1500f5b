#include "ui/frame/configuration_saver.h"

#include "base/files.h"
#include "base/text.h"
#include "link/configuration.h"
#include "site/site_file.h"
#include "ui/common/file_filter.h"

#include <QFileDialog>

#include <optional>

namespace tollwick {
namespace {

constexpr const char* kSuffix = ".json";

// Nothing when a request failed or a script did not come whole, which has been told.
std::optional<Site> fetchSite(ConsoleContext& context) {
    // Into data of its own: the lists on the screen, and a log's period that has not been sent yet,
    // stay as they are.
    ServiceData data;
    Requests requests(context.link, data, context.texts, context.prompter, context.progress);
    ServiceContext service{context.texts, context.prompter, context.progress, context.link,
                           data,          requests};
    Site site;
    site.is_backup = true;
    if (hasFailed(requests.txGetSettings()) || hasFailed(requests.txGetAllSchedules()) ||
        hasFailed(requests.txGetAllHosts()))
        return {};
    std::string cut_name;
    const ScriptsOutcome outcome = fetchScripts(service, site.scripts, cut_name);
    if (outcome == ScriptsOutcome::Cut)
        context.prompter.critical(filledIn(context.text(Text::ScriptCannotBeSaved), {cut_name}));
    if (outcome != ScriptsOutcome::Fetched)
        return {};
    site.settings = data.settings;
    site.schedules = data.schedules;
    site.hosts = data.hosts;
    return site;
}

} // namespace

void saveConfiguration(ConsoleContext& context, QWidget* window) {
    QFileDialog dialog(window, context.caption(Text::SaveConfigurationMenu).remove('&'));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(kSuffix);
    dialog.setNameFilter(fileFilter(context.text(Text::SaveConfigurationFilter)));
    dialog.selectFile(toQString(context.link.host()) + kSuffix);
    if (dialog.exec() != QDialog::Accepted || !context.link.isOpen())
        return;
    const std::optional<Site> site = fetchSite(context);
    if (!site)
        return;
    try {
        SiteFile(toPath(dialog.selectedFiles().constFirst().toStdString())).save(*site);
    } catch (const SiteFileError&) {
        return context.prompter.critical(context.text(Text::ConfigurationNotSaved));
    }
    context.progress.setInfo(context.text(Text::ConfigurationSaved));
}

} // namespace tollwick

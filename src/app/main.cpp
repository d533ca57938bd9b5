#include "app/Settings.h"
#include "model/Session.h"
#include "platform/Interaction.h"

int main(int, char **) {
    gelvane::ConsoleInteraction ui;
    const gelvane::Settings settings = gelvane::LoadSettings(ui);
    gelvane::Session session(settings, ui);
    return 0;
}

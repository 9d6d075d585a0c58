#include "editor/Editor.h"

#include "editor/access/EditorAccessible.h"
#include "editor/commands/ControlCommands.h"
#include "editor/control/TextControl.h"

#include <memory>

TextControl* makeEditor(QWidget* parent) {
    auto* control = new TextControl(parent);
    EditorAccessible::follow(*control);
    control->setCommandRunner(
        [commands = std::make_shared<ControlCommands>()](TextControl& target, int number, const QString& argument) {
            commands->run(target, number, argument);
        });
    return control;
}

#pragma once

class QQmlEngine;

// Makes the rule lists' and rule sheets' C++ types ("import Obrinta.Rules") and the
// "image://appicon/" provider known to a QML engine.
namespace RulesQml {

void install(QQmlEngine& engine);

} // namespace RulesQml

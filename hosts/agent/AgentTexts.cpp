// SPDX-License-Identifier: MIT
#include "hosts/agent/AgentTexts.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/plugin/Names.h"

using namespace dozely;

QString agentText(const QString &key)
{
    const auto bundle = NSBundle::bundleForClassNamed(userAgentControllerClass);
    return bundle ? bundle->localizedStringForKey(key) : key;
}

QString agentLanguage()
{
    const QString key("Language");
    const QString language = agentText(key);
    return language == key ? QString("en") : language;
}

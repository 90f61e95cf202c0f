#pragma once

#include "core/clsErrors.h"
#include "core/clsOptions.h"
#include "core/clsZebek.h"

#include <QDir>

#include <cstdlib>
#include <memory>

/// A root object with the services that everybody uses; what lies above them is not there.
class FakeRoot : public clsZebek
{
public:
    FakeRoot(const platform::Machine &machine, const QString &directory)
        : m_machine(machine), m_rootDirectory(directory + QDir::separator())
    {
    }

    void Start()
    {
        m_errors = std::make_unique<clsErrors>();
        m_options = std::make_unique<clsOptions>();
    }
    void Quit() override { m_options->Save(); }

    clsErrors *Errors() const override { return m_errors.get(); }
    clsOptions *Options() const override { return m_options.get(); }
    clsReplays *Replays() const override { return nullptr; }
    const QString &RootDirectory() const override { return m_rootDirectory; }
    clsWebSite *WebSite() const override { return nullptr; }
    const platform::Machine &Machine() const override { return m_machine; }
    ctlGRServer &Server() const override { std::abort(); }
    iGlobalForm *GlobalForm() const override { return nullptr; }
    iMainWindow *MainWindow() const override { return nullptr; }
    void RefreshPages(std::optional<PageKey> /*page*/) const override {}

private:
    const platform::Machine &m_machine;
    QString m_rootDirectory;
    std::unique_ptr<clsErrors> m_errors;
    std::unique_ptr<clsOptions> m_options;
};

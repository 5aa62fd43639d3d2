import { ExtensionContext, window, workspace } from "vscode";
import { LanguageClient } from "vscode-languageclient/node";

let client: LanguageClient | undefined;

export async function activate(context: ExtensionContext): Promise<void> {
    const program = workspace.getConfiguration("kdx").get<string>("program", "kdx");
    client = new LanguageClient(
        "kdx", "KDX", { command: program, args: ["lsp"] }, { documentSelector: [{ language: "kdx" }] });
    try {
        await client.start();
        context.subscriptions.push(client);
    } catch {
        client = undefined;
        void window.showErrorMessage(
            `"${program} lsp" does not start. Install kdx, or name it in the setting kdx.program.`);
    }
}

export function deactivate(): Thenable<void> | undefined {
    return client?.stop();
}

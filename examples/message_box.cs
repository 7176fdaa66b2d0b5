// Asks a question and prints the answer. Late bound, so it compiles without a reference to the
// type library: csc message_box.cs
using System;

static class Program
{
    const int KrYes = 6;

    [STAThread]
    static void Main()
    {
        dynamic dialogs = Activator.CreateInstance(Type.GetTypeFromProgID("KRXDialogs.KRXDialog"));
        int answer = dialogs.KRMsgBox("Start the pump?", 4 + 32, "Pump");
        Console.WriteLine(answer == KrYes ? "The pump starts." : "Nothing happens.");
    }
}

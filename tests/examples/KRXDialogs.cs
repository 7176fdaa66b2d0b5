// What the importer of assemblies makes of the type library, as far as the examples use it: enough for a
// compiler, not to run.
using System.Runtime.InteropServices;

namespace KRXDialogs
{
    public enum KRMsgBoxResult
    {
        krButton1 = 11,
        krButton2 = 12,
        krButton3 = 13
    }

    [ComImport, Guid("6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C3010")]
    public interface IKRXDialog
    {
        KRMsgBoxResult KRMsgBoxEx(string Text, [Optional, DefaultParameterValue(0)] int Style,
            [Optional] string Title, [Optional] string HelpFile, [Optional] int Context,
            [Optional] string Button1, [Optional] string Button2, [Optional] string Button3,
            [Optional, DefaultParameterValue(0)] int AutoActivation);
        string KROpenFile(string FileName, string StartDirectory, string Filter,
            bool AllowChangeUp = true, string Title = "");
        bool KRUserLogOn();
        void KRWhoAmI();
    }

    [ComImport, Guid("6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C3010"), CoClass(typeof(KRXDialogClass))]
    public interface KRXDialog : IKRXDialog
    {
    }

    [ComImport, Guid("6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C3020")]
    public class KRXDialogClass
    {
    }
}

# Asks a question and prints the answer: powershell -STA -File message_box.ps1
$krYes = 6
$dialogs = New-Object -ComObject KRXDialogs.KRXDialog
if ($dialogs.KRMsgBox('Start the pump?', 4 + 32, 'Pump') -eq $krYes) {
  'The pump starts.'
} else {
  'Nothing happens.'
}

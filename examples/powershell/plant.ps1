# A small plant: log on, ask, choose a recipe file, show who did it: powershell -STA -File plant.ps1
$krButton1 = 11
$krButton2 = 12
$question = 32
$thirdIsDefault = 512
$recipeFolder = 'C:\Plant\Recipes'

function Import-Recipe {
    $dialogs = New-Object -ComObject KRXDialogs.KRXDialog
    if (-not $dialogs.KRUserLogOn()) { return 'Nobody has logged on.' }
    switch ($dialogs.KRMsgBoxEx('Which mixer takes the next batch?', $question + $thirdIsDefault,
            'Next batch', '', 0, 'Mixer &A', 'Mixer &B', '&None')) {
        $krButton1 { $mixer = 'mixer A' }
        $krButton2 { $mixer = 'mixer B' }
        default { return 'No mixer has been chosen.' }
    }
    $recipe = $dialogs.KROpenFile('', $recipeFolder, 'Recipes|*.rcp|All files|*.*', $false,
        "Recipe for $mixer")
    if ($recipe -eq '') { return 'No recipe has been chosen.' }
    [void]$dialogs.KRWhoAmI()
    return "Loaded into ${mixer}: $recipe"
}

try {
    Import-Recipe
} catch {
    [Console]::Error.WriteLine("The plant stops: $($_.Exception.Message)")
    exit 1
}

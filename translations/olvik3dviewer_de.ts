<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>ColorSelection</name>
    <message>
        <source>Select Color for bound</source>
        <translation>Farbe für die Grenze wählen</translation>
    </message>
</context>
<context>
    <name>GradientBuilderDialog</name>
    <message>
        <source>Gradient</source>
        <translation>Farbverlauf</translation>
    </message>
    <message>
        <source>Min bound</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>Max bound</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>&amp;Ok</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>Show Help &amp;gt;&amp;gt;&amp;gt;</source>
        <translation>Hilfe anzeigen &amp;gt;&amp;gt;&amp;gt;</translation>
    </message>
    <message>
        <source>Hide Help &amp;lt;&amp;lt;&amp;lt;</source>
        <translation>Hilfe ausblenden &amp;lt;&amp;lt;&amp;lt;</translation>
    </message>
    <message>
        <source>Enter Bounds</source>
        <translation>Grenzen eingeben</translation>
    </message>
    <message>
        <source>Please enter min and/or max values (bounds)</source>
        <translation>Bitte geben Sie die Grenzen ein (Minimum und/oder Maximum).</translation>
    </message>
    <message>
        <source>Bound Error</source>
        <translation>Fehler in den Grenzen</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Please check Bound values</source>
        <translation>Bitte prüfen Sie die Werte der Grenzen.</translation>
    </message>
    <message>
        <source>Gradient not saved</source>
        <translation>Farbverlauf nicht gespeichert</translation>
    </message>
    <message>
        <source>The gradient could not be saved. Make room on the disk or check that you may write there, then try again.</source>
        <translation>Der Farbverlauf konnte nicht gespeichert werden. Schaffen Sie Platz auf dem Datenträger oder prüfen Sie, ob Sie dort schreiben dürfen, und versuchen Sie es dann erneut.</translation>
    </message>
</context>
<context>
    <name>GradientBuilderWidget</name>
    <message>
        <source>Left click &amp; drag: move point
Double click: Remove
Rgiht click: Edit</source>
        <translation>Linke Taste und ziehen: Punkt verschieben
Doppelklick: Entfernen
Rechtsklick: Bearbeiten</translation>
    </message>
</context>
<context>
    <name>GradientHelp</name>
    <message>
        <source>&lt;html&gt;&lt;head&gt;&lt;style&gt;h3, h4 { margin: 0px; padding: 0px; } ul { margin-top: 0px; padding: 0px; }&lt;/style&gt;&lt;/head&gt;&lt;body&gt;Hints to use gradients: &lt;br&gt;&lt;h3&gt;Purpose:&lt;/h3&gt;A gradient is a color pattern used to transform the appearance over range maps and waterfalls.&lt;h3&gt;Name:&lt;/h3&gt;Define unique name for gradient specification.&lt;h3&gt;Bounds:&lt;/h3&gt;Define one valid range in which the gradient is applied. &lt;br&gt;The values in the (range map / waterfall) lower than minimum bound will apply minimum colour. &lt;br&gt;The values in the (range map / waterfall) greater than maximum bound will apply maximum colour. &lt;br&gt;You can specify(minimum, maximum) colors applied by clicking each colour box (the colour in the colour box change).&lt;h3&gt;Gradient area:&lt;/h3&gt;&lt;h4&gt;Click Types:&lt;/h4&gt;&lt;div&gt;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&lt;b&gt;Double-click inside area:&lt;/b&gt; Create new endpoint (opens color selector dialog)&lt;br&gt;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&lt;b&gt;Double-click on endpoint:&lt;/b&gt; Remove the endpoint&lt;br&gt;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&lt;b&gt;Right-click on endpoint:&lt;/b&gt; Modify the endpoint&lt;br&gt;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&lt;b&gt;Click and drag endpoint:&lt;/b&gt; Move endpoint between left and right corners&lt;/div&gt;&lt;h4&gt;Notes:&lt;/h4&gt;&lt;ul&gt;&lt;li&gt;Endpoints appear as small red rectangles in the gradient area&lt;/li&gt;&lt;li&gt;Minimum of 2 endpoints required for each gradient&lt;/li&gt;&lt;li&gt;Endpoints define different sections within the gradient intervals&lt;/li&gt;&lt;/ul&gt;&lt;h3&gt;Application:&lt;/h3&gt;After declaring a gradient when you apply it over the (range map / waterfall) its visual representation &lt;br&gt;will be transformed according to the sections defined.&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head&gt;&lt;style&gt;h3, h4 { margin: 0px; padding: 0px; } ul { margin-top: 0px; padding: 0px; }&lt;/style&gt;&lt;/head&gt;&lt;body&gt;Hinweise zu Farbverläufen: &lt;br&gt;&lt;h3&gt;Zweck:&lt;/h3&gt;Ein Farbverlauf ist ein Farbmuster, das die Darstellung von Höhenbildern und Wasserfalldiagrammen verändert.&lt;h3&gt;Name:&lt;/h3&gt;Geben Sie dem Farbverlauf einen eindeutigen Namen.&lt;h3&gt;Grenzen:&lt;/h3&gt;Legen Sie den Wertebereich fest, in dem der Farbverlauf gilt. &lt;br&gt;Werte (im Höhenbild oder Wasserfalldiagramm) unter dem Minimum erhalten die Farbe des Minimums. &lt;br&gt;Werte (im Höhenbild oder Wasserfalldiagramm) über dem Maximum erhalten die Farbe des Maximums. &lt;br&gt;Die Farben des Minimums und des Maximums ändern Sie mit einem Doppelklick auf das jeweilige Farbfeld.&lt;h3&gt;Verlaufsbereich:&lt;/h3&gt;&lt;h4&gt;Mausaktionen:&lt;/h4&gt;&lt;div&gt;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&lt;b&gt;Doppelklick in den Bereich:&lt;/b&gt; Neuen Endpunkt anlegen (öffnet die Farbauswahl)&lt;br&gt;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&lt;b&gt;Doppelklick auf einen Endpunkt:&lt;/b&gt; Endpunkt entfernen&lt;br&gt;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&lt;b&gt;Rechtsklick auf einen Endpunkt:&lt;/b&gt; Endpunkt bearbeiten&lt;br&gt;&amp;nbsp;&amp;nbsp;&amp;nbsp;&amp;nbsp;&lt;b&gt;Endpunkt anklicken und ziehen:&lt;/b&gt; Endpunkt zwischen dem linken und dem rechten Rand verschieben&lt;/div&gt;&lt;h4&gt;Anmerkungen:&lt;/h4&gt;&lt;ul&gt;&lt;li&gt;Endpunkte erscheinen als kleine rote Rechtecke im Verlaufsbereich&lt;/li&gt;&lt;li&gt;Jeder Farbverlauf braucht mindestens 2 Endpunkte&lt;/li&gt;&lt;li&gt;Endpunkte begrenzen die Abschnitte des Farbverlaufs&lt;/li&gt;&lt;/ul&gt;&lt;h3&gt;Anwendung:&lt;/h3&gt;Wenn Sie einen Farbverlauf auf ein Höhenbild oder Wasserfalldiagramm anwenden, wird dessen Darstellung &lt;br&gt;den festgelegten Abschnitten entsprechend verändert.&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
</context>
<context>
    <name>GradientMessages</name>
    <message>
        <source>Another gradient has this name already. Please choose another name.</source>
        <translation>Ein anderer Farbverlauf heißt schon so. Bitte wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Please enter a name.</source>
        <translation>Bitte geben Sie einen Namen ein.</translation>
    </message>
    <message>
        <source>The gradients could not be saved.</source>
        <translation>Die Farbverläufe konnten nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>The gradients could not be saved. The name stays as it was.</source>
        <translation>Die Farbverläufe konnten nicht gespeichert werden. Der Name bleibt, wie er war.</translation>
    </message>
    <message>
        <source>This gradient cannot be edited: it needs a colour at both of its ends.</source>
        <translation>Dieser Farbverlauf kann nicht bearbeitet werden: Er braucht an beiden Enden eine Farbe.</translation>
    </message>
</context>
<context>
    <name>GradientTableModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Scheme</source>
        <translation>Farbschema</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Gradient name already exists.</source>
        <translation>Es gibt bereits einen Farbverlauf mit diesem Namen.</translation>
    </message>
</context>
<context>
    <name>GradientTableWidget</name>
    <message>
        <source>Gradients</source>
        <translation>Farbverläufe</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>&amp;Duplicate</source>
        <translation>&amp;Duplizieren</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Gradient</source>
        <translation>Farbverlauf</translation>
    </message>
    <message>
        <source>Cannot delete</source>
        <translation>Löschen nicht möglich</translation>
    </message>
    <message>
        <source>The Default gradient cannot be deleted</source>
        <translation>Der vorgegebene Farbverlauf kann nicht gelöscht werden.</translation>
    </message>
</context>
<context>
    <name>Olvik3DViewerPrivate</name>
    <message>
        <source>Bad OpenGl</source>
        <translation>OpenGL ungeeignet</translation>
    </message>
    <message>
        <source>No suitable OpenGL version was found!
Version 3.2 or grater is required
Please Upgrade the GPU drivers</source>
        <translation>Es wurde keine geeignete OpenGL-Version gefunden!
Version 3.2 oder neuer ist erforderlich.
Bitte aktualisieren Sie die Treiber der Grafikkarte.</translation>
    </message>
    <message>
        <source>File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>Show Zero data</source>
        <translation>&amp;Nullwerte anzeigen</translation>
    </message>
    <message>
        <source>Show Axes</source>
        <translation>&amp;Achsen anzeigen</translation>
    </message>
    <message>
        <source>Reset Zoom</source>
        <translation>&amp;Zoom zurücksetzen</translation>
    </message>
    <message>
        <source>Reset Window</source>
        <translation>&amp;Fenster zurücksetzen</translation>
    </message>
    <message>
        <source>Axes Mode</source>
        <translation>Achsen&amp;modus</translation>
    </message>
    <message>
        <source>Fixed</source>
        <translation>&amp;Fest</translation>
    </message>
    <message>
        <source>Dynamic</source>
        <translation>&amp;Dynamisch</translation>
    </message>
    <message>
        <source>Bounding Box</source>
        <translation>&amp;Hüllquader</translation>
    </message>
    <message>
        <source>save Cloud of Points</source>
        <translation>Punktwolke speichern</translation>
    </message>
    <message>
        <source>Cloud of Points (*.ply)</source>
        <translation>Punktwolke (*.ply)</translation>
    </message>
    <message>
        <source>Error Saving File</source>
        <translation>Fehler beim Speichern der Datei</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 existiert bereits.
Möchten Sie die Datei ersetzen?</translation>
    </message>
</context>
<context>
    <name>Olvik3DViewerWidget</name>
    <message>
        <source>No suitable OpenGL version was found!
Version 3.2 or grater is required
Please Upgrade the GPU drivers</source>
        <translation>Es wurde keine geeignete OpenGL-Version gefunden!
Version 3.2 oder neuer ist erforderlich.
Bitte aktualisieren Sie die Treiber der Grafikkarte.</translation>
    </message>
    <message>
        <source>Load Cloud of Points</source>
        <translation>Punktwolke laden</translation>
    </message>
    <message>
        <source>Cloud of Points (*.ply)</source>
        <translation>Punktwolke (*.ply)</translation>
    </message>
</context>
</TS>
